#include "mail_bot.h"

#include <array>
#include <string_view>
#include <utility>

namespace demo {

namespace {

// Numerics that end a registration or refuse the room; waiting would not help.
constexpr std::array<std::string_view, 13> kRefusals{
    "403", "405", "432", "433", "436", "437", "464", "465", "471", "473", "474", "475", "476"};

bool IsRefusal(const std::string& command) {
  for (const std::string_view refusal : kRefusals) {
    if (command == refusal) return true;
  }
  return false;
}

// A line of the protocol has room for 510 bytes with its prefix; a longer text is cut, but never
// within a character.
std::string Shortened(std::string text) {
  constexpr size_t kLongestText = 380;
  if (text.size() <= kLongestText) return text;
  size_t end = kLongestText;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  text.resize(end);
  return text;
}

std::string Quoted(const std::string& title) { return "\"" + title + "\""; }

}  // namespace

MailBot::MailBot(BotSettings settings, const Catalogue& catalogue, ServerLink& link)
    : settings_(std::move(settings)), catalogue_(catalogue), link_(link) {
  if (settings_.transcriptPath.empty()) return;
  transcript_.open(settings_.transcriptPath, std::ios::binary | std::ios::trunc);
  if (!transcript_) failure_ = "cannot write the transcript " + settings_.transcriptPath;
}

void MailBot::Register() {
  link_.Queue("NICK " + settings_.handle);
  link_.Queue("USER mailbot 0 * :Demo mail bot");
}

void MailBot::HandleLine(const std::string& text, Moment now) {
  const IrcLine line = ParseIrcLine(text);
  if (line.command == "PING") {
    link_.Queue("PONG :" + line.Parameter(0), ServerLink::Order::kFirst);
  } else if (line.command == "JOIN") {
    OnJoin(line, now);
  } else if (line.command == "PRIVMSG" || line.command == "NOTICE") {
    OnText(line, now);
  } else if (line.command == "001" ||
             (line.command == "KICK" && line.Parameter(1) == settings_.handle)) {
    link_.Queue("JOIN " + settings_.room);
  } else if (IsRefusal(line.command)) {
    failure_ = "the server refused: " + text;
  }
}

void MailBot::OnJoin(const IrcLine& line, Moment now) {
  if (line.nick != settings_.handle || joined_) return;
  joined_ = now;
  if (settings_.announce.count() > 0) nextAnnouncement_ = now;
}

void MailBot::OnText(const IrcLine& line, Moment now) {
  if (!joined_ || line.parameters.size() < 2) return;
  const std::string& text = line.Parameter(1);
  auto words = AddressedTo(settings_.handle, text);
  const bool direct = LowerAscii(line.Parameter(0)) == LowerAscii(settings_.handle);
  if (!words && direct) words = text;
  if (!words) return;
  Record(line.nick, text, now);

  const Request request = ParseRequest(*words, catalogue_.Count());
  // Anyone may chat with the bot, and servers send it notices: only the room gets told about
  // requests that make no sense.
  if (direct && request.kind == Request::Kind::kUnknown) return;
  link_.Queue("NOTICE " + line.nick + " :" + Shortened(Answer(request, now)));
}

std::string MailBot::Answer(const Request& request, Moment now) {
  switch (request.kind) {
    case Request::Kind::kMails:
      return MailsOnTheWay(request);
    case Request::Kind::kBadMails:
      return "There is no such mail. Please ask for a number from 1 to " +
             std::to_string(catalogue_.Count()) + ", or a range <first>-<last> within them.";
    case Request::Kind::kAccessCode:
      return "The access code for " + request.screenName + " is " + AccessCode(request.screenName);
    case Request::Kind::kVerify: {
      const bool valid = !request.screenName.empty() &&
                         LowerAscii(request.code) == LowerAscii(AccessCode(request.screenName));
      return "The access code " + request.code + " is " + (valid ? "valid" : "invalid") + " for " +
             (request.screenName.empty() ? "nobody" : request.screenName);
    }
    case Request::Kind::kList:
      return "The list of " + std::to_string(catalogue_.Count()) + " mails is in " +
             (settings_.listPath.empty() ? "no file yet" : settings_.listPath);
    case Request::Kind::kStatus:
      return Status(now);
    case Request::Kind::kUnknown:
      break;
  }
  return "I did not understand that. Say: !" + settings_.handle +
         " send <your screen name> <number>, <first>-<last>, list, status or accesscode.";
}

std::string MailBot::MailsOnTheWay(const Request& request) {
  const int count = request.last - request.first + 1;
  ++requestsServed_;
  mailsSent_ += count;
  const std::string& firstTitle = catalogue_.Title(request.first);
  if (count == 1) {
    return "Mail " + std::to_string(request.first) + " " + Quoted(firstTitle) +
           " is on the way to " + request.screenName;
  }
  return std::to_string(count) + " mails are on the way to " + request.screenName + ": " +
         std::to_string(request.first) + " " + Quoted(firstTitle) + " to " +
         std::to_string(request.last) + " " + Quoted(catalogue_.Title(request.last));
}

std::string MailBot::Status(Moment now) const {
  const auto up = std::chrono::duration_cast<std::chrono::seconds>(now - *joined_).count();
  return "Requests served: " + std::to_string(requestsServed_) +
         ", mails sent: " + std::to_string(mailsSent_) + ", up for " + std::to_string(up / 60) +
         "m " + std::to_string(up % 60) + "s";
}

void MailBot::Tick(Moment now) {
  if (!nextAnnouncement_ || now < *nextAnnouncement_) return;
  nextAnnouncement_ = now + settings_.announce;
  const std::string invitation = settings_.handle + " send <your screen name> list";
  const std::string count = std::to_string(catalogue_.Count());
  // Octal, since the colour numbers that follow the colour mark would be read as hexadecimal.
  const std::string text = announcements_++ % 2 == 0
                               ? "\00304[\00307 Mail \00304]\00312 Type \00307!" + invitation +
                                     "\00312 for my list of \002" + count + "\002 mails"
                               : "\00303,01 Mails here: \00309/notice " + invitation +
                                     "\003 tells where the \037list\037 is";
  link_.Queue("PRIVMSG " + settings_.room + " :" + text);
}

void MailBot::Record(const std::string& nick, const std::string& text, Moment now) {
  if (!transcript_.is_open()) return;
  const auto since = std::chrono::duration_cast<std::chrono::milliseconds>(now - *joined_).count();
  transcript_ << since << '\t' << nick << '\t' << text << '\n' << std::flush;
  if (!transcript_) failure_ = "cannot write the transcript " + settings_.transcriptPath;
}

}  // namespace demo
