// The server killed in the middle of runs, and the program killed while it saves: nothing that was
// not confirmed is forgotten, no file is torn, and the next connection and the next start work.

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <csignal>

#include "platform/end_signals.h"
#include "platform/native.h"
#include "settings/stored_state.h"
#include "soak/soak.h"
#include "support/child_process.h"
#include "support/memory.h"

namespace brindle::soak {
namespace {

constexpr size_t kMails = 60;

void KillServer(int times) {
  RoomServer server(20);
  const auto folder = FolderFor(server, kFewestChatLines, kMails);
  test::WindowDriver window(folder);
  window.Type("txtListAOLSN", "Jane");
  Require(window.Register("me", server.serverPort()) && window.Join(0), "no session");
  MailList& mails = window.App().Mails();
  const Session& session = window.App().CurrentSession();
  const auto everyMail = [&](bool mayBeChecked) {
    for (size_t row = 0; row < kMails; row += 2) {
      const bool arrived = server.requests.contains(std::to_string(row + 1));
      const bool isChecked = mails.IsChecked(row);
      if (mayBeChecked ? !arrived && !isChecked : !arrived || isChecked) return false;
    }
    return true;
  };
  const auto isDone = [&] { return everyMail(false); };
  size_t halved = 0;
  for (int i = 0; i < times; ++i) {
    const std::string moment = "kill " + std::to_string(i);
    server.requests.clear();
    window.LoadList(folder->File("mails.txt"));
    for (size_t row = 0; row < kMails; row += 2) mails.SetChecked(row, true);
    window.Click("cmdRequest");
    Pass(static_cast<int>(server.random() % 7'000));
    server.Drop(i % 2 == 0);
    halved += !server.requests.empty() && server.requests.size() < kMails / 2 ? 1 : 0;
    Await([&] { return session.currentRoom.empty(); }, "the end is not seen", moment);
    Pass(50);
    Require(everyMail(true), "a mail is forgotten", moment);
    window.Boxes().questionAnswers = {true};  // to go on with the rest
    Await([&] { return server.joined && !session.currentRoom.empty(); }, "it stays away", moment);
    Pass(100);
    // Nothing is asked where all was said before: then the last are only checked again.
    if (!window.Boxes().questionAnswers.empty() && !isDone()) window.Click("cmdRequest");
    Await(isDone, "the run does not end", moment);
    Require(window.Text("cmdConnect") == "Disconnect" &&
                window.Text("barStatusPanel1") == "Status - Connected" &&
                window.Find<QWidget>("cmdRequest").isEnabled(),
            "the window shows something else", moment);
  }
  std::printf("%d times the server was killed, %zu times in the middle of a run\n", times, halved);
  Require(halved > static_cast<size_t>(times) / 3, "the kills have proved nothing");
}

// All that is stored but the colours, which a victim changes; nothing where a file is not whole.
std::string Stored(const std::string& folder) {
  const StoredState state = LoadState(NativeFiles(), PathsIn(folder));
  if (state.rooms.empty() || state.servers.empty()) return "";
  return state.nick + state.rooms[0] + state.servers[0].host + OptionsText(state.options);
}

void KillProgram(int times) {
  RoomServer server(20);
  const auto folder = FolderFor(server, kFewestChatLines, kMails);
  const std::string path = folder->Path().toStdString();
  const std::string stored = Stored(path);
  const QString address = QString("irc://127.0.0.1:%1/mailroom").arg(server.serverPort());
  constexpr int kSignals[] = {SIGKILL, SIGTERM, SIGINT, SIGHUP};
  for (int i = 0; i < times; ++i) {
    const int sent = kSignals[i % 4];
    const std::string moment = "kill " + std::to_string(i) + " by signal " + std::to_string(sent);
    QProcess victim;
    test::LetEndWithParent(victim);
    victim.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    server.joined = false;
    victim.start(QCoreApplication::applicationFilePath(), {"victim", folder->Path(), address});
    Require(test::WaitUntil([&] { return server.joined; }), "it does not come up", moment);
    Pass(static_cast<int>(server.random() % 60));
    kill(static_cast<pid_t>(victim.processId()), sent);
    Require(victim.waitForFinished(), "it does not end", moment);
    const bool killed = victim.exitStatus() == QProcess::CrashExit;
    Require(killed == (sent == SIGKILL) && (killed || victim.exitCode() == 0), "a crash", moment);
    Require(Stored(path) == stored, "a file is torn", moment);
  }
  std::printf("%d times the program was killed; %d files in its folder\n", times,
              static_cast<int>(QDir(folder->Path()).entryList(QDir::Files | QDir::Hidden).size()));
}

}  // namespace

void Kill(int times) {
  KillServer(times);
  SkipWaits(false);
  KillProgram(times);
}

int BeVictim(const std::string& folder, const std::string& address) {
  FakeDialogs dialogs;
  Program program(folder, dialogs, address);
  if (!program.Open()) return 1;
  OnEndSignal([&program] {
    program.Window().close();
    QApplication::quit();
  });
  program.Window().ShowTab(Tab::kOptions);
  QTimer change;
  change.callOnTimeout([&] {
    dialogs.colourAnswers = {Colour{1, 2, 3}};
    auto* colour = program.Window().findChild<QAbstractButton*>("picListForecolor");
    if (colour != nullptr) colour->click();  // is stored at once
  });
  change.start(0);
  const int code = QApplication::exec();
  program.Close();
  return program.HasSaved() ? code : 1;
}

}  // namespace brindle::soak
