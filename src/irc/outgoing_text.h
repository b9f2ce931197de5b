#pragma once
// What the user types: a chat line for the current room, or one of the commands /msg, /tell, /j and
// /join, each one line to the server and an echo on screen; and the history of what was typed.

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/dialogs.h"
#include "base/observed_list.h"
#include "irc/room_voice.h"

namespace brindle {

class OutgoingText {
 public:
  OutgoingText(Connection& connection, RoomVoice& voice, Screen screen, ChatStyle style,
               Dialogs& dialogs)
      : connection_(connection), voice_(voice), screen_(screen), style_(style), dialogs_(dialogs) {}

  // Sends `typed`; each line of a pasted text by itself, after a question when they are many.
  // `shownTab` is the tab that tabMain shows; it chooses where a chat line is echoed. A refused
  // text stays in the box.
  void cmdSend_Click(const std::string& typed, int shownTab);

  // One step back (newest first) or forward in the history. `typed` is the text in the box: what
  // the user has begun, or made of an entry, is kept and comes back.
  void cmbSend_Up(const std::string& typed);
  void cmbSend_Down(const std::string& typed);

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
  // Nothing for a word that is none.
  static const Command* CommandOf(std::string_view word);

  // True when every line may be sent: the user is asked about the first that would be said aloud
  // though it looks like a command.
  bool MaySay(const std::vector<std::string>& lines);
  void SendLine(const std::string& line, int shownTab);
  void Tell(const Words& words);
  void Join(const Words& words);
  void Remember(const std::string& line);
  // Keeps what the box holds at this step, and shows what belongs to another one.
  void StepTo(size_t stepsBack, const std::string& typed);

  Connection& connection_;
  RoomVoice& voice_;
  Screen screen_;
  ChatStyle style_;
  Dialogs& dialogs_;
  ObservedList<std::string> history_;
  size_t stepsBack_ = 0;                  // in the history; 0 is the line being typed
  std::map<size_t, std::string> edited_;  // by step: what the user made of it
};

}  // namespace brindle
