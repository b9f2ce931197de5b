#pragma once
// Everything that says something in a room, on the stage of a session.

#include <functional>
#include <initializer_list>
#include <string>

#include "mail/manual_request.h"
#include "mail/requests.h"
#include "mail/server_commands.h"
#include "mail/server_detection.h"
#include "mail/server_handles.h"
#include "support/chat_stage.h"
#include "support/mail_stage.h"

namespace brindle {

inline const char* const kEnterFirst = "hint Enter a room first: double-click one in the channels.";

// What a line that is said writes, with its echo.
inline std::string Said(const std::string& text, const char* kind = "2") {
  return "> PRIVMSG #room :" + text + "\n" + kind + "|^C1<me> " + text;
}

inline std::string Joined(std::initializer_list<std::string> parts) {
  std::string joined;
  for (const std::string& part : parts) joined += (joined.empty() ? "" : "\n") + part;
  return joined;
}

struct TalkStage : ChatStage {
  // One row a character, numbered from 1; "x" is checked.
  void Fill(const std::string& checks) {
    list.Clear();
    for (size_t row = 0; row < checks.size(); ++row) {
      list.Append(std::to_string(row + 1), "Title");
      list.SetChecked(row, checks[row] == 'x');
    }
  }
  std::string Checks() const { return ChecksOf(list); }
  void Click() { requests.cmdRequest_Click("My Name", "Bot"); }
  // What was asked for in the journal, and the hints: "1-3 5 [Requests sent: 2]".
  std::string Asked() {
    std::string asked;
    const std::string start = "> PRIVMSG #room :!Bot send My Name ";
    const std::string taken = Taken();
    for (const std::string_view words : Split(taken, "\n")) {
      const bool hint = words.starts_with("hint ");
      if (!hint && !words.starts_with(start)) continue;
      asked += (asked.empty() ? "" : " ") + (hint ? "[" + std::string(words.substr(5)) + "]"
                                                  : std::string(words.substr(start.size())));
    }
    return asked;
  }
  void Scan(const OutputQueue::Line& line) { detection.Scan(line.text, line.origin); }

  MailList list;
  ServerPresence presence{who, options, *this};
  Requests requests{list, stack, voice, presence, options, *this};
  ManualRequest manual{stack, voice, presence, *this};
  ServerCommands commands{voice, *this};
  ServerHandles handles{*this};
  std::string screenName = "Jane D";
  ServerDetection detection{voice, queue, {options, *this}, handles, [this] { return screenName; }};
};

}  // namespace brindle
