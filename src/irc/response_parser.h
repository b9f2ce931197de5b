#pragma once
// What the server says, turned into effects: answers to the server, changes of the session and of
// the who's-here list, and lines for the display queue. Cutting a line into its parts is
// IrcLine; the table of commands is in response_parser.cpp, their handlers are in
// response_handlers.cpp, and all that only newer servers send in newer_handlers.cpp.

#include <ctime>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "irc/chat_style.h"
#include "irc/connection.h"
#include "irc/ctcp_answers.h"
#include "irc/handshake.h"
#include "irc/irc_line.h"
#include "irc/output_queue.h"
#include "irc/send_queue.h"
#include "irc/session.h"
#include "irc/who_list.h"

namespace brindle {

class ResponseParser {
 public:
  ResponseParser(Session& session, Connection& connection, SendQueue& lines, WhoList& who,
                 Screen screen, ChatStyle style)
      : session_(session),
        connection_(connection),
        lines_(lines),
        who_(who),
        screen_(screen),
        style_(style),
        handshake_(session, connection, lines, screen, style.options) {}

  // Called when the server has refused a line to a room, with its own words.
  void OnRefusedLine(std::function<void(const std::string& reason)> refused) {
    refusedLine_ = std::move(refused);
  }

  // Called when a room has been entered and who is there is known.
  void OnEntered(std::function<void()> entered) { entered_ = std::move(entered); }

  Handshake& Agreement() { return handshake_; }

  // Handles every line of `received` that ends in CR LF; what follows the last CR LF is dropped. A
  // line with too few words for its command ends the handling of the whole text, quietly.
  // `currentNick` is the session's own and changes with the server's welcome and nick changes.
  void Parse_Response(std::string_view received, std::string& currentNick);

 private:
  // A row of the dispatch table: the word, the least number of words in such a line, the handler.
  struct Command {
    const char* word;
    size_t leastWords;
    void (ResponseParser::*handle)(const IrcLine&);
  };
  static const Command kCommands[];
  static const Command kNumerics[];
  static const Command kNewer[];

  // False when the line has too few words for its command.
  bool HandleLine(const IrcLine& line);
  const Command* Find(const IrcLine& line) const;
  // Cuts the tags off the front, and keeps what they say of this line.
  void TakeTags(std::string_view& text);
  // False for a line that older servers send too.
  bool HandleNewer(const IrcLine& line);
  void AfterLine(const IrcLine& line);

  void Ignore(const IrcLine& line);
  void Join(const IrcLine& line);
  void OwnJoin(const std::string& room);
  void ClosingLink(const IrcLine& line);
  void Kick(const IrcLine& line);
  void Nick(const IrcLine& line);
  void Notice(const IrcLine& line);
  void Part(const IrcLine& line);
  void Privmsg(const IrcLine& line);
  void RoomMessage(const IrcLine& line, std::string_view text);
  void PrivateMessage(const IrcLine& line, std::string_view text);
  void PrivateCtcp(const IrcLine& line, std::string_view request);
  void Quit(const IrcLine& line);
  void Ping(const IrcLine& line);
  void Pong(const IrcLine& line);
  void TopicChange(const IrcLine& line);
  void Invite(const IrcLine& line);
  void Kill(const IrcLine& line);
  void ServerError(const IrcLine& line);

  void Capability(const IrcLine& line);
  void Authenticate(const IrcLine& line);
  void AccountReply(const IrcLine& line);
  void Away(const IrcLine& line);
  void WhoReply(const IrcLine& line);
  void AskWhoIsAway();
  void Taken(const IrcLine& line);
  void Batch(const IrcLine& line);
  void NewHost(const IrcLine& line);
  bool OwnPrivmsg(const IrcLine& line, std::string_view text);

  void Welcome(const IrcLine& line);
  void StatusReply(const IrcLine& line);
  void Topic(const IrcLine& line);
  void Names(const IrcLine& line);
  void EndOfNames(const IrcLine& line);
  void EndOfMotd(const IrcLine& line);
  void NoMotd(const IrcLine& line);
  void NickInUse(const IrcLine& line);
  void NickRefused(const IrcLine& line);
  void NotEnoughParameters(const IrcLine& line);
  void LineRefused(const IrcLine& line);
  void RoomRefused(const IrcLine& line);
  void Banned(const IrcLine& line);
  void RoomFull(const IrcLine& line);
  void BannedFromRoom(const IrcLine& line);
  void UnknownNumeric(const IrcLine& line);
  void NotParsed(const IrcLine& line);

  // How a chat line begins, with the time at which it was said.
  std::string LineStart(size_t more = 0) const { return ChatLineStart(style_, more, saidAt_); }
  void Greet();
  void SetTopic(std::string_view topic);
  // The user is in no room any more; `reason` tells why.
  void LeaveRoom(const std::string& reason);
  void Queue(const std::string& text, Kind kind) { screen_.queue.QueueLine(text, kind); }
  void Hint(const std::string& text) { screen_.window.ShowHint(text); }
  bool IsOwnNick(std::string_view nick) const;
  bool IsCurrentRoom(std::string_view room) const;

  Session& session_;
  Connection& connection_;
  SendQueue& lines_;
  WhoList& who_;
  Screen screen_;
  ChatStyle style_;
  Handshake handshake_;
  CtcpAnswers ctcp_;
  std::function<void(const std::string& reason)> refusedLine_;
  std::function<void()> entered_;
  std::string* currentNick_ = nullptr;  // valid within Parse_Response
  bool namesClearPending_ = false;
  // Of the line in hand, where the server tells.
  std::optional<std::tm> saidAt_;
  std::string label_;
  std::map<std::string, std::string> batches_;  // labels by the names of open batches
};

}  // namespace brindle
