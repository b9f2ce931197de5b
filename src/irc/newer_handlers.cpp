// What newer servers send (IRCv3), once they were asked what they can do: the handlers of
// ResponseParser for it, and its look at the tags in front of a line.

#include <algorithm>

#include "base/text.h"
#include "irc/message_tags.h"
#include "irc/response_parser.h"

namespace brindle {
namespace {

constexpr size_t kMostBatches = 64;    // open at the same time
constexpr size_t kMostAskedFor = 300;  // a server answers with a line for each who is there

bool IsRefusal(std::string_view numeric) {
  constexpr size_t kDigits = 3;
  return numeric.size() == kDigits && IsAllDigits(numeric) &&
         (numeric.starts_with('4') || numeric.starts_with('5'));
}

}  // namespace

// Command or reply, in lower case. With too few words a line means nothing.
const ResponseParser::Command ResponseParser::kNewer[] = {
    {"cap", 1, &ResponseParser::Capability},   {"authenticate", 1, &ResponseParser::Authenticate},
    {"900", 2, &ResponseParser::AccountReply}, {"901", 2, &ResponseParser::AccountReply},
    {"902", 2, &ResponseParser::AccountReply}, {"903", 2, &ResponseParser::AccountReply},
    {"904", 2, &ResponseParser::AccountReply}, {"905", 2, &ResponseParser::AccountReply},
    {"906", 2, &ResponseParser::AccountReply}, {"907", 2, &ResponseParser::AccountReply},
    {"908", 2, &ResponseParser::AccountReply}, {"away", 2, &ResponseParser::Away},
    {"ack", 2, &ResponseParser::Taken},        {"batch", 2, &ResponseParser::Batch},
    {"chghost", 4, &ResponseParser::NewHost},  {"account", 2, &ResponseParser::Ignore},
    {"tagmsg", 2, &ResponseParser::Ignore},    {"352", 9, &ResponseParser::WhoReply},
    {"315", 2, &ResponseParser::Ignore},
};

void ResponseParser::TakeTags(std::string_view& text) {
  saidAt_.reset();
  label_.clear();
  if (!handshake_.BringsTags()) return;
  const MessageTags tags = MessageTags::CutFrom(text);
  saidAt_ = LocalTimeOf(tags.Value("time"));
  label_ = tags.Value("label");
  const auto batch = batches_.find(tags.Value("batch"));
  if (label_.empty() && batch != batches_.end()) label_ = batch->second;
}

bool ResponseParser::HandleNewer(const IrcLine& line) {
  if (!handshake_.IsActive()) return false;
  const std::string word = LowerCase(line.Word(line.Word(0).starts_with(':') ? 1 : 0));
  const bool isAboutCap =
      EqualsIgnoringCase(line.Word(2), "cap") || EqualsIgnoringCase(line.Word(3), "cap");
  if (isAboutCap && (word == "421" || word == "451")) {
    handshake_.NoCapabilities();
    return true;
  }
  const auto* command = std::find_if(std::begin(kNewer), std::end(kNewer),
                                     [&](const Command& row) { return word == row.word; });
  if (command == std::end(kNewer)) return false;
  if (line.HasWords(command->leastWords)) (this->*command->handle)(line);
  return true;
}

void ResponseParser::AfterLine(const IrcLine& line) {
  if (!label_.empty() && IsRefusal(line.Word(1))) {
    lines_.Own().Refused(label_, std::string(line.Text(4)));
  }
}

void ResponseParser::Capability(const IrcLine& line) { handshake_.Capability(line); }
void ResponseParser::Authenticate(const IrcLine& line) { handshake_.Authenticate(line); }
void ResponseParser::AccountReply(const IrcLine& line) { handshake_.AccountReply(line); }
void ResponseParser::Taken(const IrcLine&) { lines_.Own().Taken(label_); }

void ResponseParser::Away(const IrcLine& line) { who_.SetAway(line.Nick(), line.HasWords(3)); }

// The server tells who goes away from now on; who already has must be asked for.
void ResponseParser::AskWhoIsAway() {
  if (!handshake_.IsOn("away-notify") || session_.currentRoom.empty()) return;
  if (who_.Nicks().Size() <= kMostAskedFor) connection_.SendRaw("WHO " + session_.currentRoom);
}

// Words 7 and 8 are the nick, and "G" (gone) or "H" (here) before other marks (RFC 2812, 5.1).
void ResponseParser::WhoReply(const IrcLine& line) {
  who_.SetAway(line.Word(7), line.Word(8).starts_with('G'));
}

// "BATCH +name type" begins lines that belong together, "BATCH -name" ends them. What they have in
// common here is the label of the line that they answer.
void ResponseParser::Batch(const IrcLine& line) {
  const std::vector<std::string_view> parameters = ParametersOf(line.Received());
  const std::string_view word = parameters.size() < 2 ? "" : parameters[1];
  const std::string name(word.substr(std::min<size_t>(1, word.size())));
  if (word.starts_with('-')) {
    batches_.erase(name);
  } else if (!label_.empty() && batches_.size() < kMostBatches) {
    batches_[name] = label_;
  }
}

void ResponseParser::NewHost(const IrcLine& line) {
  if (!IsOwnNick(line.Nick())) return;
  constexpr std::string_view kMarks = ":!@ ";
  session_.sourceLength =
      kMarks.size() + line.Nick().size() + line.Word(2).size() + WithoutColon(line.Word(3)).size();
}

// What we have said ourselves and the server relays to us. False for what is shown like the lines
// of others.
bool ResponseParser::OwnPrivmsg(const IrcLine& line, std::string_view text) {
  if (!handshake_.IsOn("echo-message") || !IsOwnNick(line.Nick())) return false;
  const std::string target(WithoutColon(line.Word(2)));
  if (lines_.Own().Relayed(label_, target, text, saidAt_)) return true;
  if (IsCurrentRoom(target) || IsOwnNick(target)) return false;
  // A password is never shown.
  if (LowerCase(text).starts_with("identify ")) return true;
  screen_.queue.QueueLine(
      LineStart() + "\00311You tell " + target + ", \00315'\00311" + std::string(text) + "\00315'",
      Kind::kBoth, Origin::kOwn);
  return true;
}

}  // namespace brindle
