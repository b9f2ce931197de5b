// The handlers of ResponseParser's table: one for each command or reply that means something.

#include <algorithm>

#include "base/text.h"
#include "irc/nick_words.h"
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

// What the server wants back: the first parameter (RFC 1459, section 4.6.2), everything after the
// colon that begins it, else the word itself.
std::string_view PingToken(const IrcLine& line) {
  const bool hasSource = !EqualsIgnoringCase(WithoutColon(line.Word(0)), "ping");
  const std::string_view received = line.Received();
  const std::string_view word = line.Word(hasSource ? 2 : 1);
  if (word.empty()) return word;
  const auto begin = static_cast<size_t>(word.data() - line.Line().data());
  const std::string_view rest = received.substr(std::min(begin, received.size()));
  return rest.starts_with(':') ? rest.substr(1) : rest.substr(0, rest.find(' '));
}

// The words of a refusal, which servers send as the last parameter.
std::string Reason(const IrcLine& line) { return std::string(line.Text(4)); }

// What the server says in an ERROR (RFC 1459, section 4.6.4), which has no source.
std::string ErrorText(const IrcLine& line) {
  const std::string_view received = line.Received();
  return std::string(
      WithoutColon(received.substr(std::min(received.find(' ') + 1, received.size()))));
}

std::string Room(const IrcLine& line) { return std::string(WithoutColon(line.Word(2))); }

}  // namespace

void ResponseParser::Ignore(const IrcLine&) {}

void ResponseParser::Join(const IrcLine& line) {
  const std::string nick = line.Nick();
  const std::string room = Room(line);
  if (nick.empty() || room.empty()) return;
  if (IsOwnNick(nick)) {
    // What others receive from us begins with this source and a blank.
    session_.sourceLength = line.Word(0).size() + 1;
    OwnJoin(room);
    return;
  }
  Queue("\r\n\0033* " + nick + " \0039has joined \0033" + room, Kind::kJoin);
  if (!IsCurrentRoom(room)) return;
  who_.AddNick(nick);
  lines_.Whois(nick);
}

void ResponseParser::OwnJoin(const std::string& room) {
  // A repeated notice of the room that we are in already must not make us leave it.
  if (!session_.currentRoom.empty() && !IsCurrentRoom(room)) {
    connection_.SendRaw(brindle::Part(session_.currentRoom));
    Queue("\r\n\0034* Parted", Kind::kRoom);
  }
  who_.Clear();
  screen_.window.Show_RoomTab();
  Queue(kSeparatorLine, Kind::kStatus);
  session_.currentRoom = room;
  session_.topic.clear();
  screen_.window.SessionChanged();
  screen_.window.ShowHint("");
  Queue("\r\n\0033* Now talking in " + room, Kind::kRoom);
}

void ResponseParser::ClosingLink(const IrcLine& line) {
  connection_.ServerError(ErrorText(line));
  connection_.ClosingNotice();
}

void ResponseParser::ServerError(const IrcLine& line) {
  connection_.ServerError(ErrorText(line));
  NotParsed(line);
}

void ResponseParser::Kick(const IrcLine& line) {
  const std::string kicked(WithoutColon(line.Word(3)));
  const std::string reason(line.Text(4));
  Queue("\r\n\00311* " + line.Nick() + " says " + reason + ", then kicks " + kicked +
            " from the channel.",
        Kind::kRoom);
  if (!IsCurrentRoom(Room(line))) return;
  who_.RemoveNick(kicked);
  if (!IsOwnNick(kicked)) return;
  LeaveRoom("kicked by " + line.Nick() + ": " + reason);
}

void ResponseParser::Nick(const IrcLine& line) {
  const std::string oldNick = line.Nick();
  const std::string newNick(WithoutColon(line.Word(2)));
  if (oldNick.empty() || newNick.empty()) return;
  Queue("\r\n\00311* " + oldNick + " is now known as " + newNick + ".", Kind::kRoom);
  who_.RenameNick(oldNick, newNick);
  if (IsOwnNick(oldNick)) *currentNick_ = newNick;
}

void ResponseParser::Notice(const IrcLine& line) {
  // Our own answers to others come back where the server relays what we say.
  if (handshake_.IsOn("echo-message") && IsOwnNick(line.Nick())) return;
  Queue(LineStart() + "\0035-" + line.Nick() + "- " + std::string(line.Text(3)),
        style_.options.noticesToStatus ? Kind::kStatus : Kind::kNotice);
}

void ResponseParser::Part(const IrcLine& line) {
  const std::string nick = line.Nick();
  const std::string room = Room(line);
  Queue("\r\n\0033* " + nick + " \0039has left \0033" + room, Kind::kPart);
  if (!IsCurrentRoom(room)) return;
  who_.RemoveNick(nick);
  if (!IsOwnNick(nick)) return;
  session_.currentRoom.clear();
  screen_.window.SessionChanged();
}

void ResponseParser::Privmsg(const IrcLine& line) {
  const std::string_view text = line.Text(3);
  if (OwnPrivmsg(line, text)) return;
  if (IsCurrentRoom(WithoutColon(line.Word(2)))) {
    RoomMessage(line, text);
  } else {
    PrivateMessage(line, text);
  }
}

void ResponseParser::RoomMessage(const IrcLine& line, std::string_view text) {
  if (!IsOwnNick(NickOf(line.Word(0))) && Mentions(text, *currentNick_)) {
    screen_.window.CallUser();
  }
  if (IsAction(line.Word(3))) {
    Queue("\r\n\00314* " + line.Nick() + " " + std::string(line.WordRest(4)), Kind::kRoom);
    return;
  }
  const std::string_view nick = NickOf(line.Word(0));
  std::string shown = LineStart(nick.size() + text.size());
  shown.append("\0031<").append(nick).append("> ").append(text);
  screen_.queue.QueueLine(shown, Kind::kRoom, IsOwnNick(nick) ? Origin::kOwn : Origin::kRoom);
}

void ResponseParser::PrivateMessage(const IrcLine& line, std::string_view text) {
  const std::string nick = line.Nick();
  if (text.starts_with(kCtcpMark) && !IsAction(line.Word(3))) return PrivateCtcp(line, text);
  screen_.window.CallUser();
  Queue(LineStart() + "\00311" + nick + " tells you, \00315'\00311" + std::string(text) +
            "\00315'\r\n\00311" + "(To reply type /msg " + nick + " text)",
        style_.options.messagesToStatus ? Kind::kStatus : Kind::kPrivateMessage);
}

void ResponseParser::PrivateCtcp(const IrcLine& line, std::string_view request) {
  const std::string nick = line.Nick();
  std::optional<std::string> answer;
  // Only what was sent to us alone is answered.
  if (style_.options.answerCtcp && IsOwnNick(WithoutColon(line.Word(2)))) {
    const size_t around = session_.sourceLength + brindle::Notice(nick, "").size();
    answer = ctcp_.AnswerTo(request, kLongestLine - std::min(around, kLongestLine), style_.clock);
  }
  if (answer) connection_.SendRaw(brindle::Notice(nick, *answer));
  Queue(LineStart() + "\00311" + nick + " sends a CTCP request, which is " +
            (answer ? "" : "not ") +
            "answered: " + RemoveChars(request, std::string_view(&kCtcpMark, 1)),
        style_.options.messagesToStatus ? Kind::kStatus : Kind::kPrivateMessage);
}

void ResponseParser::Quit(const IrcLine& line) {
  const std::string nick = line.Nick();
  Queue("\r\n\00312* " + nick + " has quit.", Kind::kRoom);
  who_.RemoveNick(nick);
}

void ResponseParser::Ping(const IrcLine& line) {
  Queue("\r\n\00313[\00310SERVER PING\00313]", Kind::kStatus);
  connection_.SendRaw(brindle::Pong(PingToken(line)));
}

void ResponseParser::Pong(const IrcLine& line) {
  const std::string_view token = WithoutColon(line.Word(line.WordCount() - 1));
  if (!Connection::IsOwnToken(token) && !lines_.TakePong(token)) NotParsed(line);
}

void ResponseParser::TopicChange(const IrcLine& line) {
  NotParsed(line);
  if (!IsCurrentRoom(Room(line))) return;
  SetTopic(line.Text(3));
  Queue("\r\n\0033* " + line.Nick() + " sets the topic to '" + std::string(line.Text(3)) + "\0033'",
        Kind::kRoom);
}

void ResponseParser::Invite(const IrcLine& line) {
  NotParsed(line);
  Hint(line.Nick() + " invites you to " + std::string(line.Text(3)) + ".");
}

void ResponseParser::Kill(const IrcLine& line) {
  NotParsed(line);
  const std::string killed(WithoutColon(line.Word(2)));
  const std::string reason(line.Text(3));
  if (IsOwnNick(killed)) session_.endReason = "killed by " + line.Nick() + ": " + reason;
  Hint(line.Nick() + " removes " + killed + " from the server: " + reason);
}

void ResponseParser::Welcome(const IrcLine& line) {
  if (!handshake_.MayBegin()) return;
  batches_.clear();
  *currentNick_ = std::string(WithoutColon(line.Word(2)));
  connection_.Welcomed();
  Queue("\r\n" + Trailing(line), Kind::kConnected);
}

void ResponseParser::StatusReply(const IrcLine& line) {
  Queue("\r\n" + Trailing(line), Kind::kStatus);
}

void ResponseParser::SetTopic(std::string_view topic) {
  session_.topic = topic;
  screen_.window.SessionChanged();
}

void ResponseParser::Topic(const IrcLine& line) {
  if (IsCurrentRoom(line.Word(3))) SetTopic(line.Text(4));
  Queue("\r\n\0033* Topic is '" + std::string(line.Text(4)) + "\0033'", Kind::kRoom);
}

void ResponseParser::Names(const IrcLine& line) {
  const std::string_view room = line.Word(4);
  if (!session_.currentRoom.empty() && !IsCurrentRoom(room)) return;
  // A names reply only ever adds: the own join has emptied the list before it.
  namesClearPending_ = false;
  who_.AddNames(line, namesClearPending_,
                handshake_.IsOn("multi-prefix") ? WhoList::Marks::kHighest : WhoList::Marks::kAll);
}

void ResponseParser::EndOfNames(const IrcLine&) {
  namesClearPending_ = true;
  Queue(kSeparatorLine, Kind::kRoom);
  AskWhoIsAway();
  if (entered_ && !session_.currentRoom.empty()) entered_();
}

void ResponseParser::EndOfMotd(const IrcLine& line) {
  Queue("\r\n" + Trailing(line), Kind::kStatus);
  Greet();
}

void ResponseParser::NoMotd(const IrcLine& line) {
  Queue("\r\n\0034" + Trailing(line), Kind::kStatus);
  Greet();
}

void ResponseParser::LeaveRoom(const std::string& reason) {
  session_.endReason = reason;
  Hint("You are no longer in " + session_.currentRoom + ": " + reason);
  session_.currentRoom.clear();
  screen_.window.SessionChanged();
}

void ResponseParser::Greet() {
  Queue(kGreeting, Kind::kStatus);
  session_.connectionState = ConnectionState::kRegistered;
}

void ResponseParser::NickInUse(const IrcLine& line) { connection_.NickInUse(Trailing(line)); }

void ResponseParser::NickRefused(const IrcLine& line) {
  if (session_.connectionState != ConnectionState::kConnecting) return UnknownNumeric(line);
  connection_.NickRefused(std::string(line.Text(4)));
}

void ResponseParser::NotEnoughParameters(const IrcLine& line) {
  if (EqualsIgnoringCase(line.Word(3), "nick")) return NickRefused(line);
  UnknownNumeric(line);
}

void ResponseParser::Banned(const IrcLine& line) { connection_.BannedFromServer(Trailing(line)); }

void ResponseParser::RoomFull(const IrcLine& line) {
  const std::string room(line.Word(3));
  Queue("\r\n\0034" + room + " - Can't join, room is full.", Kind::kBoth);
  Hint(room + " - Can't join, room is full.");
}

void ResponseParser::BannedFromRoom(const IrcLine& line) {
  const std::string room(line.Word(3));
  Queue("\r\n\0034" + room + " - Can't join, you are banned from this room.", Kind::kBoth);
  Hint(room + " - Can't join, you are banned from this room.");
}

void ResponseParser::RoomRefused(const IrcLine& line) {
  UnknownNumeric(line);
  Hint(std::string(line.Word(3)) + ": " + Reason(line));
}

void ResponseParser::LineRefused(const IrcLine& line) {
  RoomRefused(line);
  // Under a label it is known which line it was.
  if (lines_.Own().Knows(label_)) return;
  if (refusedLine_ && IsCurrentRoom(line.Word(3))) refusedLine_(Reason(line));
}

void ResponseParser::UnknownNumeric(const IrcLine& line) {
  Queue("\r\nIS NUMERIC : " + line.Line(), Kind::kStatus);
}

void ResponseParser::NotParsed(const IrcLine& line) {
  Queue("\r\n\00312NOT PARSED : " + line.Line(), Kind::kStatus);
}

bool ResponseParser::IsOwnNick(std::string_view nick) const {
  return !nick.empty() && EqualsIgnoringCase(nick, *currentNick_);
}

bool ResponseParser::IsCurrentRoom(std::string_view room) const {
  return !session_.currentRoom.empty() && EqualsIgnoringCase(room, session_.currentRoom);
}

}  // namespace brindle
