#include "irc/response_parser.h"

#include "base/encoding.h"
#include "base/text.h"

namespace brindle {
namespace {

// Numerics that need no answer and show nothing.
constexpr std::string_view kSilentNumerics[] = {"002", "003", "004", "005", "250", "252", "254",
                                                "255", "265", "266", "301", "311", "312", "317",
                                                "318", "319", "333", "338", "375"};

// Keeps the pump off the queue for as long as it lives.
class BusyQueue {
 public:
  explicit BusyQueue(OutputQueue& queue) : queue_(queue), before_(queue.IsBusy()) {
    queue_.SetBusy(true);
  }
  ~BusyQueue() { queue_.SetBusy(before_); }
  BusyQueue(const BusyQueue&) = delete;
  BusyQueue& operator=(const BusyQueue&) = delete;

 private:
  OutputQueue& queue_;
  bool before_;
};

}  // namespace

// Second word of a line, in lower case. What comes most often stands first.
const ResponseParser::Command ResponseParser::kCommands[] = {
    {"privmsg", 3, &ResponseParser::Privmsg},   {"join", 3, &ResponseParser::Join},
    {"part", 3, &ResponseParser::Part},         {"quit", 2, &ResponseParser::Quit},
    {"notice", 3, &ResponseParser::Notice},     {"auth", 2, &ResponseParser::Ignore},
    {"mode", 2, &ResponseParser::Ignore},       {":closing", 2, &ResponseParser::ClosingLink},
    {"kick", 4, &ResponseParser::Kick},         {"nick", 3, &ResponseParser::Nick},
    {"ping", 2, &ResponseParser::Ping},         {"pong", 3, &ResponseParser::Pong},
    {"topic", 3, &ResponseParser::TopicChange}, {"invite", 3, &ResponseParser::Invite},
    {"kill", 3, &ResponseParser::Kill},
};

// Replies, RFC 1459 section 6; compared as text.
const ResponseParser::Command ResponseParser::kNumerics[] = {
    {"001", 3, &ResponseParser::Welcome},
    {"251", 2, &ResponseParser::StatusReply},
    {"253", 2, &ResponseParser::StatusReply},
    {"332", 3, &ResponseParser::Topic},
    {"353", 5, &ResponseParser::Names},
    {"366", 2, &ResponseParser::EndOfNames},
    {"372", 2, &ResponseParser::StatusReply},
    {"376", 2, &ResponseParser::EndOfMotd},
    {"401", 4, &ResponseParser::LineRefused},
    {"403", 4, &ResponseParser::RoomRefused},
    {"404", 4, &ResponseParser::LineRefused},
    {"405", 4, &ResponseParser::RoomRefused},
    {"422", 2, &ResponseParser::NoMotd},
    {"432", 2, &ResponseParser::NickRefused},
    {"433", 2, &ResponseParser::NickInUse},
    {"436", 2, &ResponseParser::NickRefused},
    {"437", 2, &ResponseParser::NickRefused},
    {"442", 4, &ResponseParser::LineRefused},
    {"461", 2, &ResponseParser::NotEnoughParameters},
    {"465", 2, &ResponseParser::Banned},
    {"471", 4, &ResponseParser::RoomFull},
    {"473", 4, &ResponseParser::RoomRefused},
    {"474", 4, &ResponseParser::BannedFromRoom},
    {"475", 4, &ResponseParser::RoomRefused},
    {"477", 4, &ResponseParser::RoomRefused},
    {"482", 4, &ResponseParser::LineRefused},
    {"489", 4, &ResponseParser::RoomRefused},
};

void ResponseParser::Parse_Response(std::string_view received, std::string& currentNick) {
  const BusyQueue busy(screen_.queue);
  currentNick_ = &currentNick;
  for (size_t end = received.find(kCrLf); end != std::string_view::npos;
       end = received.find(kCrLf)) {
    std::string_view text = received.substr(0, end);
    received.remove_prefix(end + kCrLf.size());
    TakeTags(text);
    std::string decoded;
    if (!IsValidUtf8(text)) text = decoded = DecodeReceived(text);
    // The colon makes sure that even a line without source or text has two fields.
    const bool connecting = session_.connectionState == ConnectionState::kConnecting;
    const bool addColon = !text.starts_with(':') && !connecting;
    const IrcLine line(text, addColon);
    if (!HandleLine(line)) return;
    AfterLine(line);
  }
}

bool ResponseParser::HandleLine(const IrcLine& line) {
  if (!line.HasWords(2)) {
    screen_.queue.QueueLine("\r\nERROR : " + line.Line(), Kind::kStatus);
    return true;
  }
  if (HandleNewer(line)) return true;
  if (const Command* command = Find(line)) {
    if (!line.HasWords(command->leastWords)) return false;
    (this->*command->handle)(line);
  } else if (EqualsIgnoringCase(line.Word(0), "error")) {
    ServerError(line);
  } else if (IsAllDigits(line.Word(1))) {
    UnknownNumeric(line);
  } else {
    NotParsed(line);
  }
  return true;
}

const ResponseParser::Command* ResponseParser::Find(const IrcLine& line) const {
  // A server may leave out the source of a PING, which makes it the first word.
  static constexpr Command kPing = {"ping", 2, &ResponseParser::Ping};
  static constexpr Command kSilent = {"", 2, &ResponseParser::Ignore};
  for (const Command& command : kCommands) {
    if (EqualsIgnoringCase(line.Word(1), command.word)) return &command;
  }
  if (EqualsIgnoringCase(WithoutColon(line.Word(0)), kPing.word)) return &kPing;
  for (const Command& numeric : kNumerics) {
    if (line.Word(1) == numeric.word) return &numeric;
  }
  for (std::string_view silent : kSilentNumerics) {
    if (line.Word(1) == silent) return &kSilent;
  }
  return nullptr;
}

}  // namespace brindle
