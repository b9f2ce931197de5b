#include "irc/outgoing_text.h"

#include <algorithm>

#include "base/text.h"
#include "irc/echo.h"

namespace brindle {
namespace {

constexpr Colour kPureBlue{0, 0, 255};
constexpr size_t kLeastTellWords = 3;  // the command, the target and a word of text
constexpr size_t kJoinWords = 2;       // the command and the room

Kind EchoKind(int shownTab) {
  constexpr int kStatusTab = 0;
  constexpr int kRoomTab = 1;
  constexpr int kListTab = 2;
  if (shownTab == kStatusTab) return Kind::kStatus;
  return shownTab == kRoomTab || shownTab == kListTab ? Kind::kRoom : Kind::kBoth;
}

}  // namespace

const OutgoingText::Command OutgoingText::kCommands[] = {
    {"/msg", &OutgoingText::Tell},
    {"/tell", &OutgoingText::Tell},
    {"/j", &OutgoingText::Join},
    {"/join", &OutgoingText::Join},
};

void OutgoingText::cmdSend_Click(const std::string& typed, int shownTab) {
  if (!connection_.IsSocketConnected()) {
    dialogs_.Notice(Icon::kInformation,
                    "You must first connect to a server before sending text to a room.");
    return;
  }
  if (session_.currentRoom.empty()) {
    if (!IsBlank(typed)) view_.ShowHint("Enter a room first: double-click one in the channels.");
    return;
  }
  if (IsBlank(typed)) return;
  const Words words = Split(typed, " ");
  const auto* command =
      std::find_if(std::begin(kCommands), std::end(kCommands),
                   [&](const Command& row) { return EqualsIgnoringCase(words.front(), row.word); });
  if (command != std::end(kCommands)) {
    (this->*command->run)(words);
  } else {
    Chat(typed, shownTab);
  }
  Remember(typed);
  view_.SetSendText("");
}

void OutgoingText::Tell(const Words& words) {
  const std::string start = ChatLineStart(options_, clock_);
  if (words.size() < kLeastTellWords) {
    queue_.QueueLine(start + "\0032Not enough parameters for tell.", Kind::kBoth);
    return;
  }
  const std::string target(words[1]);
  const std::string message = JoinFrom(words, 2, " ");
  connection_.SendRaw("PRIVMSG " + target + " :" + message);
  queue_.QueueLine(start + "\00311You tell " + target + ", \00315'\00311" + message + "\00315'",
                   Kind::kBoth);
}

void OutgoingText::Join(const Words& words) {
  if (words.size() != kJoinWords || words[1].empty()) {
    display_.Insert("Either not enough or too many parameters for room change.\r\n", kPureBlue,
                    ChatTarget::kStatus);
    return;
  }
  const std::string room(words[1]);
  connection_.SendRaw("JOIN " + (room.starts_with('#') ? room : "#" + room));
}

void OutgoingText::Chat(const std::string& typed, int shownTab) {
  connection_.SendRaw("PRIVMSG " + session_.currentRoom + " :" + typed);
  queue_.QueueLine(EchoStart(session_, options_, clock_) + typed, EchoKind(shownTab));
}

void OutgoingText::Remember(const std::string& typed) {
  stepsBack_ = 0;
  begun_.clear();
  const std::vector<std::string>& known = history_.Items();
  const bool isKnown = std::any_of(known.begin(), known.end(), [&](const std::string& entry) {
    return EqualsIgnoringCase(entry, typed);
  });
  if (!isKnown) history_.Add(typed);
}

void OutgoingText::cmbSend_Up(const std::string& typed) {
  if (stepsBack_ >= history_.Size()) return;
  if (stepsBack_ == 0) begun_ = typed;
  ++stepsBack_;
  view_.SetSendText(history_.Items()[history_.Size() - stepsBack_]);
}

void OutgoingText::cmbSend_Down() {
  if (stepsBack_ == 0) return;
  --stepsBack_;
  view_.SetSendText(stepsBack_ == 0 ? begun_ : history_.Items()[history_.Size() - stepsBack_]);
}

}  // namespace brindle
