// receive_bench [LINES [REPETITIONS]]: the processor time from the socket to the display queue for
// a room's lines, and what the queue costs: its memory, and the time to append and take a line.
// Prints figures (see measure.h).

#include <QCoreApplication>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "irc/response_parser.h"
#include "libircclient_count.h"
#include "line_server.h"
#include "measure.h"
#include "platform/clock_qt.h"
#include "platform/native.h"
#include "platform/network.h"
#include "support/fake_dialogs.h"
#include "support/wait.h"

namespace brindle {
namespace {

constexpr size_t kJudgedLines = 1'000'000;  // the goals are meant for so many lines
constexpr int kPatienceMilliseconds = 300'000;

// A window that shows nothing.
class NoWindow : public WindowView, public ConnectView {
 public:
  void SetStatusPanel(const std::string&) override {}
  void SetWindowCaption(const std::string&) override {}
  void SetBufferMonitor(const std::string&) override {}
  void SetRtbMonitor(const std::string&) override {}
  void Show_RoomTab() override {}
  void FocusSendBox() override {}
  void SetSendText(const std::string&) override {}
  void ShowHint(const std::string&) override {}
  void SessionChanged() override {}
  void CallUser() override {}
  void SetConnectButton(ConnectCaption, bool) override {}
  void ShowCancelButton(bool) override {}
  void SetNickFieldsEnabled(bool) override {}
  void SetAlternateNick(const std::string&) override {}
  void SetLoginStatus(const std::string&) override {}
  void SetConnectTrouble(const std::string&) override {}
  void SetPort(const std::string&) override {}
  void SetTls(bool) override {}
};

// The session as the program puts it together, without its windows.
struct Client {
  Session session;
  Options options;
  QtClock clock;
  std::unique_ptr<NetworkChatSocket> socket = NativeChatSocket();
  OutputQueue queue;
  NoWindow window;
  FakeDialogs dialogs;
  NativeFiles files;
  SettingsFile settings{files, ""};
  SecureServers secure{settings};
  Connection connection{
      session, *socket, queue, {window, window, dialogs}, clock, {options, secure, ""}};
  SendQueue lines{session, connection, clock};
  WhoList who;
  ResponseParser parser{session, connection, lines, who, {queue, window}, {options, clock}};
};

// The processor time for receiving `lines` lines; 0 when they did not all come.
double ReceiveOurselves(int port, size_t lines) {
  int argc = 0;
  QCoreApplication application(argc, nullptr);
  Client client;
  client.socket->SetListener(client.connection);
  client.connection.SetReceiver([&](std::string_view received, std::string& currentNick) {
    client.parser.Parse_Response(received, currentNick);
  });
  const double before = ProcessorMilliseconds();
  client.connection.cmdConnect_Click({"bench", "bench2", "127.0.0.1", std::to_string(port)});
  const auto isOver = [&] {
    return client.queue.Pending() >= lines ||
           client.session.connectionState == ConnectionState::kDisconnected;
  };
  test::WaitUntil(isOver, kPatienceMilliseconds);
  return client.queue.Pending() < lines ? 0 : ProcessorMilliseconds() - before;
}

double ReceiveWithLibircclient([[maybe_unused]] int port, [[maybe_unused]] size_t lines) {
#ifdef BRINDLE_HAS_LIBIRCCLIENT
  const double before = ProcessorMilliseconds();
  return CountWithLibircclient(port, lines) < lines ? 0 : ProcessorMilliseconds() - before;
#else
  return 0;
#endif
}

// Each client in a process of its own, with a server of its own. Nothing when it failed.
std::optional<double> Receive(double (*receive)(int, size_t), size_t lines) {
  const LineServer server(lines);
  if (server.Port() == 0) return std::nullopt;
  const auto time = InOwnProcess([&] { return receive(server.Port(), lines); });
  return time && *time > 0 ? time : std::nullopt;
}

std::optional<double> Judged(size_t lines, double goal) {
  return lines == kJudgedLines ? std::optional(goal) : std::nullopt;
}

std::string Named(const char* name, size_t lines) {
  return std::string(name) + ", " + std::to_string(lines) + " lines";
}

bool MeasureReceiving(size_t lines, size_t repetitions) {
  std::vector<double> ours;
  std::vector<double> theirs;
  for (size_t i = 0; i < repetitions; ++i) {
    if (const auto time = Receive(ReceiveWithLibircclient, lines)) theirs.push_back(*time);
    const auto time = Receive(ReceiveOurselves, lines);
    if (!time) return false;
    ours.push_back(*time);
  }
  Print({Named("receive up to the queue", lines), Median(ours), "ms of processor time",
         theirs.empty() ? std::nullopt : std::optional(Median(theirs)), Judged(lines, 1.5)});
  return true;
}

std::string QueuedLine(size_t line) {
  return "\r\n\0031<talker" + std::to_string(line % 100) + "> line " + std::to_string(line) +
         " of a lively room, with some words in it";
}

void MeasureQueue(size_t lines, size_t repetitions) {
  double text = 0;
  for (size_t i = 0; i < lines; ++i) text += static_cast<double>(QueuedLine(i).size());
  const auto bytes = InOwnProcess([lines] {
    OutputQueue queue;
    const double before = ResidentBytes();
    for (size_t i = 0; i < lines; ++i) queue.QueueLine(QueuedLine(i), Kind::kRoom);
    return ResidentBytes() - before;
  });
  Print({Named("pending queue, memory", lines), bytes.value_or(0) / 1e6, "MB", text / 1e6,
         Judged(lines, 1.5)});

  // At a backlog that stays the same, so that the cost of one line shows whether it grows with it.
  constexpr size_t kSteps = 100'000;
  OutputQueue queue;
  for (size_t i = 0; i < lines; ++i) queue.QueueLine(QueuedLine(i), Kind::kRoom);
  const std::string line = QueuedLine(12345);
  std::vector<double> times;
  for (size_t i = 0; i < repetitions; ++i) {
    times.push_back(MillisecondsOf([&] {
      for (size_t step = 0; step < kSteps; ++step) {
        queue.QueueLine(line, Kind::kRoom);
        if (queue.Take().text.empty()) std::exit(EXIT_FAILURE);
      }
    }));
  }
  Print({Named("pending queue, append and take one", lines),
         Median(times) * 1e6 / static_cast<double>(kSteps), "ns", std::nullopt, std::nullopt});
}

}  // namespace
}  // namespace brindle

int main(int argc, char** argv) {
  const auto argument = [&](int i, size_t otherwise) {
    if (argc <= i) return otherwise;
    return static_cast<size_t>(brindle::WholeNumber(argv[i], 1, 100'000'000).value_or(1));
  };
  const size_t lines = argument(1, brindle::kJudgedLines);
  const size_t repetitions = argument(2, 5);
  if (!brindle::MeasureReceiving(lines, repetitions)) return EXIT_FAILURE;
  brindle::MeasureQueue(lines, repetitions);
  return EXIT_SUCCESS;
}
