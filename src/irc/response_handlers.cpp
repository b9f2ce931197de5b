// The handlers of ResponseParser's table: one for each command or reply that means something.

#include <algorithm>

#include "base/text.h"
#include "irc/chat_colours.h"
#include "irc/echo.h"
#include "irc/response_parser.h"

namespace brindle {
namespace {

constexpr size_t kTrailingField = 2;
constexpr char kCtcpMark = '\x01';

// A rule across the view in two greys.
constexpr char kSeparatorLine[] =
    "\r\n\00315-----\00314----------\00315----------------------------------------"
    "\00314----------\00315-----";

constexpr char kGreeting[] =
    "\r\n\0039You are now connected. To enter a channel locate the channel listbox on the right "
    "and double click a room name.";

std::string Trailing(const IrcLine& line) { return std::string(line.ColonRest(kTrailingField)); }

// True for the word that opens a CTCP ACTION, ":" and character 1 before "ACTION". One without any
// text after it also carries the closing mark.
bool IsAction(std::string_view word) {
  if (word.ends_with(kCtcpMark)) word.remove_suffix(1);
  return EqualsIgnoringCase(word, ":\001ACTION");
}

// What the server wants back: everything after the first colon, or after the word PING where there
// is none.
std::string_view PingToken(const IrcLine& line) {
  std::string_view rest = line.Received();
  const bool hasSource = !EqualsIgnoringCase(WithoutColon(line.Word(0)), "ping");
  const size_t skip = hasSource ? line.Word(0).size() + 1 : rest.starts_with(':') ? 1 : 0;
  rest.remove_prefix(std::min(skip, rest.size()));
  const size_t colon = rest.find(':');
  if (colon != std::string_view::npos) return rest.substr(colon + 1);
  const size_t blank = rest.find(' ');
  return blank == std::string_view::npos ? "" : rest.substr(blank + 1);
}

std::string Room(const IrcLine& line) { return std::string(WithoutColon(line.Word(2))); }

}  // namespace

void ResponseParser::Ignore(const IrcLine&) {}

void ResponseParser::Join(const IrcLine& line) {
  const std::string nick = line.Nick();
  const std::string room = Room(line);
  if (nick.empty() || room.empty()) return;
  if (IsOwnNick(nick)) {
    OwnJoin(room);
    return;
  }
  queue_.QueueLine("\r\n\0033* " + nick + " \0039has joined \0033" + room, Kind::kJoin);
  who_.AddNick(nick);
  connection_.SendRaw("WHOIS " + nick);
}

void ResponseParser::OwnJoin(const std::string& room) {
  // A repeated notice of the room that we are in already must not make us leave it.
  if (!session_.currentRoom.empty() && !IsCurrentRoom(room)) {
    connection_.SendRaw("PART " + session_.currentRoom);
    queue_.QueueLine("\r\n\0034* Parted", Kind::kRoom);
  }
  who_.Clear();
  roomTab_.Show_RoomTab();
  queue_.QueueLine(kSeparatorLine, Kind::kStatus);
  session_.currentRoom = room;
  queue_.QueueLine("\r\n\0033* Now talking in " + room, Kind::kRoom);
}

void ResponseParser::ClosingLink(const IrcLine&) { connection_.ClosingNotice(); }

void ResponseParser::Kick(const IrcLine& line) {
  const std::string kicked(WithoutColon(line.Word(3)));
  queue_.QueueLine("\r\n\00311* " + line.Nick() + " says " + Trailing(line) + ", then kicks " +
                       kicked + " from the channel.",
                   Kind::kRoom);
  who_.RemoveNick(kicked);
  if (IsOwnNick(kicked) && IsCurrentRoom(Room(line))) session_.currentRoom.clear();
}

void ResponseParser::Nick(const IrcLine& line) {
  const std::string oldNick = line.Nick();
  const std::string newNick(WithoutColon(line.Word(2)));
  if (oldNick.empty() || newNick.empty()) return;
  queue_.QueueLine("\r\n\00311* " + oldNick + " is now known as " + newNick + ".", Kind::kRoom);
  who_.RemoveNick(oldNick);
  who_.AddNick(newNick);
  if (IsOwnNick(oldNick)) *currentNick_ = newNick;
}

void ResponseParser::Notice(const IrcLine& line) {
  queue_.QueueLine(ChatLineStart(options_, clock_) + "\0035-" + line.Nick() + "- " + Trailing(line),
                   options_.noticesToStatus ? Kind::kStatus : Kind::kNotice);
}

void ResponseParser::Part(const IrcLine& line) {
  const std::string nick = line.Nick();
  const std::string room = Room(line);
  queue_.QueueLine("\r\n\0033* " + nick + " \0039has left \0033" + room, Kind::kPart);
  who_.RemoveNick(nick);
  if (IsOwnNick(nick) && IsCurrentRoom(room)) session_.currentRoom.clear();
}

void ResponseParser::Privmsg(const IrcLine& line) {
  const std::string_view text = line.ColonRest(kTrailingField);
  if (IsCurrentRoom(WithoutColon(line.Word(2)))) {
    RoomMessage(line, text);
  } else {
    PrivateMessage(line, text);
  }
}

void ResponseParser::RoomMessage(const IrcLine& line, std::string_view text) {
  if (IsAction(line.Word(3))) {
    const std::string action =
        RemoveChars(ShowableText(line.WordRest(4)), std::string_view(&kCtcpMark, 1));
    queue_.QueueLine("\r\n\00314* " + line.Nick() + " " + action, Kind::kRoom);
    return;
  }
  const std::string_view nick = NickOf(line.Word(0));
  std::string shown = ChatLineStart(options_, clock_, nick.size() + text.size());
  shown.append("\0031<").append(nick).append("> ").append(text);
  queue_.QueueLine(shown, Kind::kRoom);
}

void ResponseParser::PrivateMessage(const IrcLine& line, std::string_view text) {
  const std::string nick = line.Nick();
  queue_.QueueLine(ChatLineStart(options_, clock_) + "\00311" + nick + " tells you, \00315'\00311" +
                       std::string(text) + "\00315'\r\n\00311" + "(To reply type /msg " + nick +
                       " text)",
                   options_.messagesToStatus ? Kind::kStatus : Kind::kPrivateMessage);
}

void ResponseParser::Quit(const IrcLine& line) {
  const std::string nick = line.Nick();
  queue_.QueueLine("\r\n\00312* " + nick + " has quit.", Kind::kRoom);
  who_.RemoveNick(nick);
}

void ResponseParser::Ping(const IrcLine& line) {
  queue_.QueueLine("\r\n\00313[\00310SERVER PING\00313]", Kind::kStatus);
  connection_.SendRaw("PONG :" + std::string(PingToken(line)));
}

void ResponseParser::Welcome(const IrcLine& line) {
  *currentNick_ = std::string(WithoutColon(line.Word(2)));
  connection_.Welcomed();
  queue_.QueueLine("\r\n" + Trailing(line), Kind::kConnected);
}

void ResponseParser::StatusReply(const IrcLine& line) {
  queue_.QueueLine("\r\n" + Trailing(line), Kind::kStatus);
}

void ResponseParser::Topic(const IrcLine& line) {
  queue_.QueueLine("\r\n\0033* Topic is '" + Trailing(line) + "\0033'", Kind::kRoom);
}

void ResponseParser::Names(const IrcLine& line) {
  // A names reply only ever adds: the own join has emptied the list before it.
  namesClearPending_ = false;
  who_.AddNames(line, namesClearPending_);
}

void ResponseParser::EndOfNames(const IrcLine&) {
  namesClearPending_ = true;
  queue_.QueueLine(kSeparatorLine, Kind::kRoom);
}

void ResponseParser::EndOfMotd(const IrcLine& line) {
  queue_.QueueLine("\r\n" + Trailing(line), Kind::kStatus);
  Greet();
}

void ResponseParser::NoMotd(const IrcLine& line) {
  queue_.QueueLine("\r\n\0034" + Trailing(line), Kind::kStatus);
  Greet();
}

void ResponseParser::Greet() {
  queue_.QueueLine(kGreeting, Kind::kStatus);
  session_.connectionState = ConnectionState::kRegistered;
}

void ResponseParser::NickInUse(const IrcLine& line) { connection_.NickInUse(Trailing(line)); }

void ResponseParser::Banned(const IrcLine& line) { connection_.BannedFromServer(Trailing(line)); }

void ResponseParser::RoomFull(const IrcLine& line) {
  queue_.QueueLine("\r\n\0034" + std::string(line.Word(3)) + " - Can't join, room is full.",
                   Kind::kBoth);
}

void ResponseParser::BannedFromRoom(const IrcLine& line) {
  queue_.QueueLine(
      "\r\n\0034" + std::string(line.Word(3)) + " - Can't join, you are banned from this room.",
      Kind::kBoth);
}

void ResponseParser::UnknownNumeric(const IrcLine& line) {
  queue_.QueueLine("\r\nIS NUMERIC : " + line.Line(), Kind::kStatus);
}

void ResponseParser::NotParsed(const IrcLine& line) {
  queue_.QueueLine("\r\n\00312NOT PARSED : " + line.Line(), Kind::kStatus);
}

bool ResponseParser::IsOwnNick(std::string_view nick) const {
  return !nick.empty() && EqualsIgnoringCase(nick, *currentNick_);
}

bool ResponseParser::IsCurrentRoom(std::string_view room) const {
  return !session_.currentRoom.empty() && EqualsIgnoringCase(room, session_.currentRoom);
}

}  // namespace brindle
