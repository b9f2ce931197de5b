#pragma once
// What the user types: a chat line for the current room, or one of the commands /msg, /tell, /j and
// /join, each one line to the server and an echo on screen; and the history of what was typed.

#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "base/dialogs.h"
#include "base/observed_list.h"
#include "irc/chat_colours.h"
#include "irc/connection.h"
#include "irc/output_queue.h"
#include "irc/session.h"
#include "settings/options.h"

namespace brindle {

class SendBoxView {
 public:
  virtual ~SendBoxView() = default;
  // Replaces the text of cmbSend.
  virtual void SetSendText(const std::string& text) = 0;
  // A word to the user that interrupts nothing.
  virtual void ShowHint(const std::string& text) = 0;
};

class OutgoingText {
 public:
  OutgoingText(const Session& session, Connection& connection, OutputQueue& queue,
               ChatColours& display, const Options& options, SendBoxView& view, Dialogs& dialogs,
               const Clock& clock)
      : session_(session),
        connection_(connection),
        queue_(queue),
        display_(display),
        options_(options),
        view_(view),
        dialogs_(dialogs),
        clock_(clock) {}

  // Sends `typed`. `shownTab` is the tab that tabMain shows; it chooses where a chat line is
  // echoed. A refused line stays in the box.
  void cmdSend_Click(const std::string& typed, int shownTab);

  // One step back (newest first) or forward in the history. `typed` is the text in the box: what
  // the user has begun is kept and comes back after the newest entry.
  void cmbSend_Up(const std::string& typed);
  void cmbSend_Down();

  // Every different line typed, oldest first; case does not make a difference.
  const ObservedList<std::string>& History() const { return history_; }

 private:
  using Words = std::vector<std::string_view>;

  // A row of the table of commands.
  struct Command {
    const char* word;
    void (OutgoingText::*run)(const Words& words);
  };
  static const Command kCommands[];

  void Tell(const Words& words);
  void Join(const Words& words);
  void Chat(const std::string& typed, int shownTab);
  void Remember(const std::string& typed);

  const Session& session_;
  Connection& connection_;
  OutputQueue& queue_;
  ChatColours& display_;
  const Options& options_;
  SendBoxView& view_;
  Dialogs& dialogs_;
  const Clock& clock_;
  ObservedList<std::string> history_;
  size_t stepsBack_ = 0;  // in the history; 0 is the line being typed
  std::string begun_;     // that line while the history is walked
};

}  // namespace brindle
