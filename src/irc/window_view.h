#pragma once
// The main window, as the session and the mail rooms speak to it.

#include <string>

namespace brindle {

class OutputQueue;

class WindowView {
 public:
  virtual ~WindowView() = default;
  // The first panel of the status bar.
  virtual void SetStatusPanel(const std::string& text) = 0;
  virtual void SetWindowCaption(const std::string& text) = 0;
  // lblBufferSizePeak and lblRTBSizePeak: "current/peak".
  virtual void SetBufferMonitor(const std::string& text) = 0;
  virtual void SetRtbMonitor(const std::string& text) = 0;
  // Brings the room view to the front.
  virtual void Show_RoomTab() = 0;
  // Puts the keyboard focus into the line for typing, or replaces its text.
  virtual void FocusSendBox() = 0;
  virtual void SetSendText(const std::string& text) = 0;
  // A word to the user that interrupts nothing.
  virtual void ShowHint(const std::string& text) = 0;
  // The session has another state, room or topic.
  virtual void SessionChanged() = 0;
  // Something is meant for the user, who may be looking at another window.
  virtual void CallUser() = 0;
};

// Where lines and words to the user go.
struct Screen {
  OutputQueue& queue;
  WindowView& window;
};

}  // namespace brindle
