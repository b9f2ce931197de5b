// The demo mail bot: a stand-in for a real mail server's bot, for trying the client by hand and for
// tests over a real IRC server. It sends no mail; it only says so.

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <csignal>
#include <functional>
#include <iostream>
#include <map>
#include <string_view>

#include "mail_bot.h"

namespace {

using demo::Moment;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::chrono::seconds kConnectPatience{10};
constexpr std::chrono::seconds kJoinPatience{30};
constexpr std::chrono::seconds kQuitPatience{1};

constexpr std::string_view kUsage =
    "Usage: brindle_demo_bot --port N [options]\n"
    "  --host HOST        the IRC server (127.0.0.1)\n"
    "  --room ROOM        the room to serve (#mailroom)\n"
    "  --handle NICK      the bot's nick (MailBot)\n"
    "  --mails N          how many mails to offer, 1 to 100000 (500)\n"
    "  --list PATH        write the list file there\n"
    "  --transcript PATH  write the requests received there: milliseconds since the bot joined,\n"
    "                     nick and text, separated by tabs\n"
    "  --announce SECONDS announce the bot in the room every so often; 0 for never (60)\n"
    "  --until-eof        end when standard input is closed\n";

struct Arguments {
  std::string host = "127.0.0.1";
  std::string port;
  int mails = 500;
  bool untilEof = false;
  demo::BotSettings bot;
};

template <typename Value>
bool ReadNumber(const std::string& text, Value lowest, Value highest, Value& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() && value >= lowest &&
         value <= highest;
}

// False, with a message, for anything that the bot does not understand.
bool ReadArguments(int count, char** texts, Arguments& arguments) {
  double announce = 60;
  int port = 0;
  arguments.bot.handle = "MailBot";
  arguments.bot.room = "#mailroom";
  const auto keep = [](std::string& where) {
    return [&where](const std::string& value) { return where = value, !value.empty(); };
  };
  const std::map<std::string_view, std::function<bool(const std::string&)>> readers{
      {"--host", keep(arguments.host)},
      {"--port", [&](const std::string& v) { return ReadNumber(v, 1, 65535, port); }},
      {"--room", keep(arguments.bot.room)},
      {"--handle", keep(arguments.bot.handle)},
      {"--mails", [&](const std::string& v) { return ReadNumber(v, 1, 100000, arguments.mails); }},
      {"--list", keep(arguments.bot.listPath)},
      {"--transcript", keep(arguments.bot.transcriptPath)},
      {"--announce", [&](const std::string& v) { return ReadNumber(v, 0.0, 86400.0, announce); }},
  };
  for (int i = 1; i < count; ++i) {
    const std::string_view name = texts[i];
    if (name == "--until-eof") {
      arguments.untilEof = true;
      continue;
    }
    const auto reader = readers.find(name);
    if (reader == readers.end() || i + 1 == count || !reader->second(texts[i + 1])) {
      std::cerr << "brindle_demo_bot: cannot use " << name << "\n" << kUsage;
      return false;
    }
    ++i;
  }
  if (port == 0) std::cerr << "brindle_demo_bot: --port is missing\n" << kUsage;
  arguments.port = std::to_string(port);
  arguments.bot.announce = milliseconds(static_cast<long long>(announce * 1000));
  return port != 0;
}

// A descriptor that becomes readable when the bot is asked to end.
int EndSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  return signalfd(-1, &signals, SFD_CLOEXEC);
}

bool StdinClosed() {
  char buffer[256];
  return read(STDIN_FILENO, buffer, sizeof buffer) <= 0;
}

int PollTimeout(Moment now, std::initializer_list<std::optional<Moment>> wakers) {
  milliseconds wait{1000};
  for (const auto& waker : wakers) {
    // Rounded up, so that the time has really come when poll returns.
    if (waker) wait = std::min(wait, std::chrono::ceil<milliseconds>(*waker - now));
  }
  return static_cast<int>(std::max<milliseconds::rep>(wait.count(), 0));
}

class Session {
 public:
  Session(demo::MailBot& bot, demo::ServerLink& link, bool untilEof, int endSignals)
      : bot_(bot), link_(link), untilEof_(untilEof), endSignals_(endSignals) {}

  // Serves until told to end; the program's exit code.
  int Run() {
    const Moment start = steady_clock::now();
    bot_.Register();
    while (true) {
      const bool open = Step();
      if (!bot_.Failure().empty()) return Fail(bot_.Failure());
      if (!open && !bot_.Joined()) return Fail("the server closed the connection");
      if (!open) return 0;
      if (!ready_ && bot_.Joined()) std::cout << "ready" << std::endl;
      ready_ = bot_.Joined();
      if (asked_) return Leave();
      if (!ready_ && steady_clock::now() - start > kJoinPatience) return Fail("no way in");
    }
  }

 private:
  // Waits for something to do and does it; false once the connection has ended.
  bool Step() {
    const Moment before = steady_clock::now();
    pollfd watched[3] = {{link_.Descriptor(), POLLIN, 0},
                         {endSignals_, POLLIN, 0},
                         {untilEof_ ? STDIN_FILENO : -1, POLLIN, 0}};
    poll(watched, 3, PollTimeout(before, {link_.NextSend(), bot_.NextAnnouncement()}));
    const Moment now = steady_clock::now();
    if (watched[1].revents != 0) asked_ = true;
    if (watched[2].revents != 0 && StdinClosed()) asked_ = true;
    const bool open = watched[0].revents == 0 || link_.Receive();
    while (const auto line = link_.NextLine()) bot_.HandleLine(*line, now);
    bot_.Tick(now);
    return open && link_.SendDue(now);
  }

  // Says goodbye and waits a moment for the server to close.
  int Leave() {
    link_.Queue("QUIT :Closing the mail room", demo::ServerLink::Order::kFirst);
    const Moment deadline = steady_clock::now() + kQuitPatience;
    endSignals_ = -1;
    untilEof_ = false;
    while (steady_clock::now() < deadline && Step()) {
    }
    return 0;
  }

  static int Fail(const std::string& why) {
    std::cerr << "brindle_demo_bot: " << why << "\n";
    return 1;
  }

  demo::MailBot& bot_;
  demo::ServerLink& link_;
  bool untilEof_;
  int endSignals_;
  bool asked_ = false;
  bool ready_ = false;
};

}  // namespace

int main(int count, char** texts) {
  if (count == 2 && std::string_view(texts[1]) == "--help") {
    std::cout << kUsage;
    return 0;
  }
  Arguments arguments;
  if (!ReadArguments(count, texts, arguments)) return 2;

  const demo::Catalogue catalogue(arguments.mails);
  const std::string& listPath = arguments.bot.listPath;
  if (!listPath.empty() && !catalogue.WriteList(listPath, arguments.bot.handle)) {
    std::cerr << "brindle_demo_bot: cannot write the list file " << listPath << "\n";
    return 1;
  }
  demo::ServerLink link;
  if (!link.Connect(arguments.host, arguments.port, kConnectPatience)) {
    std::cerr << "brindle_demo_bot: no IRC server at " << arguments.host << " port "
              << arguments.port << "\n";
    return 1;
  }
  const int endSignals = EndSignals();
  demo::MailBot bot(arguments.bot, catalogue, link);
  return Session(bot, link, arguments.untilEof, endSignals).Run();
}
