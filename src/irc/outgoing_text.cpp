#include "irc/outgoing_text.h"

#include <algorithm>

#include "base/text.h"

namespace brindle {
namespace {

constexpr size_t kLeastTellWords = 3;  // the command, the target and a word of text
constexpr size_t kJoinWords = 2;       // the command and the room
constexpr size_t kMostUnaskedLines = 3;

Kind EchoKind(int shownTab) {
  constexpr int kStatusTab = 0;
  constexpr int kRoomTab = 1;
  constexpr int kListTab = 2;
  if (shownTab == kStatusTab) return Kind::kStatus;
  return shownTab == kRoomTab || shownTab == kListTab ? Kind::kRoom : Kind::kBoth;
}

// The lines of a pasted text, without those of nothing but blanks.
std::vector<std::string> LinesOf(std::string_view typed) {
  std::vector<std::string> lines;
  while (!typed.empty()) {
    const size_t end = std::min(typed.find_first_of(std::string_view("\r\n\0", 3)), typed.size());
    if (!IsBlank(typed.substr(0, end))) lines.emplace_back(typed.substr(0, end));
    typed.remove_prefix(std::min(end + 1, typed.size()));
  }
  return lines;
}

// A slash and a letter, with blanks before it or not.
bool LooksLikeACommand(std::string_view word) {
  const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  return word.size() > 1 && word.front() == '/' && isLetter(word[1]);
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
  const std::vector<std::string> lines = LinesOf(typed);
  if (lines.empty() || !voice_.HasRoom()) return;
  if (lines.size() > kMostUnaskedLines &&
      !dialogs_.Question(Icon::kInformation, "Say " + std::to_string(lines.size()) + " lines?")) {
    return;
  }
  if (!MaySay(lines)) return;
  for (const std::string& line : lines) SendLine(line, shownTab);
  screen_.window.SetSendText("");
}

const OutgoingText::Command* OutgoingText::CommandOf(std::string_view word) {
  const auto* command =
      std::find_if(std::begin(kCommands), std::end(kCommands),
                   [&](const Command& row) { return EqualsIgnoringCase(word, row.word); });
  return command == std::end(kCommands) ? nullptr : command;
}

bool OutgoingText::MaySay(const std::vector<std::string>& lines) {
  if (!style_.options.askUnknownCommand) return true;
  for (const std::string& line : lines) {
    const std::string_view text = TrimBlanks(line);
    const std::string_view word = Split(text, " ").front();
    // A known one behind blanks is said too.
    if (!LooksLikeACommand(word) || (CommandOf(word) != nullptr && line.front() == '/')) {
      continue;
    }
    return dialogs_.Question(Icon::kExclamation, std::string(word) +
                                                     " is no command of Brindle. Say this aloud in "
                                                     "the room?\r\n" +
                                                     std::string(text));
  }
  return true;
}

void OutgoingText::SendLine(const std::string& line, int shownTab) {
  const Words words = Split(line, " ");
  const Command* command = CommandOf(words.front());
  if (command != nullptr) {
    (this->*command->run)(words);
  } else {
    voice_.Say(line, EchoKind(shownTab));
  }
  Remember(line);
}

void OutgoingText::Tell(const Words& words) {
  if (words.size() < kLeastTellWords) {
    screen_.queue.QueueLine(ChatLineStart(style_) + "\0032Not enough parameters for tell.",
                            Kind::kBoth);
    return;
  }
  const std::string target(words[1]);
  voice_.Tell(target, JoinFrom(words, 2, " "),
              [this, target](const std::string& start, const std::string& piece) {
                screen_.queue.QueueLine(
                    start + "\00311You tell " + target + ", \00315'\00311" + piece + "\00315'",
                    Kind::kBoth, Origin::kOwn);
              });
}

void OutgoingText::Join(const Words& words) {
  if (words.size() != kJoinWords || words[1].empty()) {
    screen_.queue.QueueLine("\00312Either not enough or too many parameters for room change.\r\n",
                            Kind::kStatus);
    return;
  }
  const std::string room(words[1]);
  connection_.EnterRoom(room.starts_with('#') ? room : "#" + room);
}

void OutgoingText::Remember(const std::string& line) {
  stepsBack_ = 0;
  edited_.clear();
  const std::vector<std::string>& known = history_.Items();
  const bool isKnown = std::any_of(known.begin(), known.end(), [&](const std::string& entry) {
    return EqualsIgnoringCase(entry, line);
  });
  if (!isKnown) history_.Add(line);
}

void OutgoingText::cmbSend_Up(const std::string& typed) {
  if (stepsBack_ < history_.Size()) StepTo(stepsBack_ + 1, typed);
}

void OutgoingText::cmbSend_Down(const std::string& typed) {
  if (stepsBack_ > 0) StepTo(stepsBack_ - 1, typed);
}

void OutgoingText::StepTo(size_t stepsBack, const std::string& typed) {
  edited_[stepsBack_] = typed;
  stepsBack_ = stepsBack;
  const auto kept = edited_.find(stepsBack);
  screen_.window.SetSendText(kept != edited_.end() ? kept->second
                             : stepsBack == 0      ? std::string()
                                                   : history_.Items()[history_.Size() - stepsBack]);
}

}  // namespace brindle
