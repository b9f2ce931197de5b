#pragma once
// What the program shows, written down: the window with all that the session's rooms put on it, the
// two chat views and the sounds.

#include <string>
#include <utility>
#include <vector>

#include "irc/channels.h"
#include "irc/chat_colours.h"
#include "irc/connection.h"
#include "irc/line_pump.h"
#include "irc/response_parser.h"
#include "mail/requests.h"

namespace brindle {

class FakeWindow : public ConnectionView,
                   public PumpView,
                   public RoomTab,
                   public ChannelsView,
                   public RequestsView {
 public:
  void SetConnectButton(ConnectCaption shown, bool enabled) override {
    button = shown == ConnectCaption::kConnect ? "Connect" : "Disconnect";
    if (!enabled) button += " (disabled)";
  }
  void SetNickFieldsEnabled(bool enabled) override { nickFieldsEnabled = enabled; }
  void SetAlternateNick(const std::string& nick) override { alternateNick = nick; }
  void SetStatusPanel(const std::string& text) override { statusPanel = text; }
  void SetLoginStatus(const std::string& text) override { loginStatus = text; }
  void SetWindowCaption(const std::string& text) override {
    caption = text;
    ++captionChanges;
  }
  void SetBufferMonitor(const std::string& text) override { bufferMonitor = text; }
  void SetRtbMonitor(const std::string& text) override { rtbMonitor = text; }
  void Show_RoomTab() override { ++roomTabShown; }
  void FocusSendBox() override { ++sendBoxFocused; }
  void ShowHint(const std::string& text) override { hint = text; }

  std::string button = "Connect";
  bool nickFieldsEnabled = true;
  std::string alternateNick = "as typed";
  std::string statusPanel;
  std::string loginStatus;
  std::string caption;
  int captionChanges = 0;
  std::string bufferMonitor = "0/0";
  std::string rtbMonitor = "0/0";
  int roomTabShown = 0;
  int sendBoxFocused = 0;
  std::string hint;
};

class FakeChatView : public ChatView {
 public:
  void Append(const std::vector<ColouredRun>& added) override {
    for (const ColouredRun& run : added) {
      text += run.text;
      runs.push_back(run);
    }
  }
  size_t TextLength() const override { return text.size(); }

  std::string TakeText() { return std::exchange(text, {}); }

  std::string text;
  std::vector<ColouredRun> runs;
};

class FakeSounds : public SoundPlayer {
 public:
  void Play(const std::string& path) override { played.push_back(path); }
  std::vector<std::string> played;
};

}  // namespace brindle
