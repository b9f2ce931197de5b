// What the program costs while it is connected to a real IRC server and nobody says a word.
// Usage: idle_bench [SECONDS]; run with QT_QPA_PLATFORM=offscreen.

#include <sys/resource.h>

#include <QApplication>
#include <QListView>
#include <QPushButton>
#include <QTimer>
#include <cstdio>

#include "app/program.h"
#include "measure.h"
#include "support/data_folder.h"
#include "support/fake_dialogs.h"
#include "support/irc_server.h"
#include "support/wait.h"

namespace {

constexpr int kPatienceMilliseconds = 15000;

long VoluntarySwitches() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_nvcsw;
}

// False when the room is not entered in time.
bool EnterRoom(brindle::Program& program) {
  auto& window = program.Window();
  window.findChild<QPushButton*>("cmdConnect")->click();
  const auto& session = program.CurrentSession();
  if (!brindle::test::WaitUntil(
          [&] { return session.connectionState == brindle::ConnectionState::kRegistered; },
          kPatienceMilliseconds)) {
    return false;
  }
  auto* channels = window.findChild<QListView*>("lstChannels");
  channels->setCurrentIndex(channels->model()->index(0, 0));
  window.findChild<QPushButton*>("lblJoin")->click();
  return brindle::test::WaitUntil([&] { return !session.currentRoom.empty(); },
                                  kPatienceMilliseconds);
}

void RunEvents(int milliseconds) {
  QTimer::singleShot(milliseconds, qApp, &QApplication::quit);
  QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
  brindle::test::IrcServer server(brindle::test::IrcServer::Kind::kNgircd);
  if (seconds < 1 || !server.Start()) {
    std::fprintf(stderr, "Usage: idle_bench [SECONDS] (and ngIRCd must be installed)\n");
    return 2;
  }
  const brindle::test::DataFolder folder(
      {"quiet", "127.0.0.1:" + std::to_string(server.Port()), {"#quiet"}, "", false});
  brindle::FakeDialogs dialogs;
  brindle::Program program(folder.Path().toStdString(), dialogs);
  if (!program.Open() || !EnterRoom(program)) {
    std::fprintf(stderr, "The room was not entered.\n");
    return 1;
  }
  RunEvents(2000);  // until what came with the room is shown
  const long switches = VoluntarySwitches();
  const double processor = brindle::ProcessorMilliseconds();
  RunEvents(seconds * 1000);
  brindle::Print({"idle in a quiet room: wake-ups a second, at most 2",
                  static_cast<double>(VoluntarySwitches() - switches) / seconds,
                  "1/s",
                  {},
                  {}});
  brindle::Print({"idle in a quiet room: processor time a second",
                  (brindle::ProcessorMilliseconds() - processor) / seconds,
                  "ms",
                  {},
                  {}});
  return 0;
}
