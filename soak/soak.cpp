// A day of the whole program in minutes: a busy room, lists, requests, lost connections; and that
// memory, counters and the time between two events stay as they must.
//   soak [HOURS]      the day, or a part of it
//   soak kills [N]    see kills.cpp

#include "soak/soak.h"

#include <QAbstractItemView>
#include <QApplication>
#include <algorithm>

#include "bench/measure.h"
#include "ui/look.h"

namespace brindle::soak {
namespace {

constexpr double kLinesAnHour = 500'000 / 24.0;
constexpr double kMovesAnHour = 2'000;
constexpr int kOthers = 5'000;
constexpr int kRows = 100'000;
constexpr int kRareRows = 50;
constexpr int kSlot = 864'000;        // milliseconds, a hundredth of a day
constexpr double kLongTurn = 10;      // milliseconds
constexpr double kLongestTurn = 100;  // the same
constexpr double kMostGrowth = 16;    // MiB, after the bound was reached

// Counts what is computed between two events, which is what a user would wait.
struct Application : QApplication {
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    Mark();
    const bool done = QApplication::notify(receiver, event);
    Mark();
    return done;
  }
  // By the processor's time: no other program on the machine counts.
  void Mark() {
    const double now = ProcessorMilliseconds();
    longest = std::max(longest, now - last);
    longTurns += now - last < kLongTurn ? 0 : 1;
    last = now;
  }
  double last = 0;
  double longest = 0;
  size_t longTurns = 0;
};

struct Day {
  Day(Application& app, double hours)
      : application(app),
        length(static_cast<int>(hours * 3'600'000 / kSlot)),
        bound(std::clamp(static_cast<int>(hours * kLinesAnHour / 5), kFewestChatLines, 100'000)) {}

  void Run() {
    window.Type("txtListAOLSN", "Jane");
    Require(window.Register("me", server.serverPort()) && window.Join(0), "no session");
    window.ShowTab(Tab::kInfo);
    window.Click("cmdIdle");
    second.callOnTimeout([this] { Talk(); });
    application.longest = 0;
    for (int slot = 1; slot <= length; ++slot) {
      second.start(1000);
      window.ShowTab(slot % 4 == 0 ? Tab::kOptions : Tab::kRoom);
      Pass(kSlot);
      if (slot % 2 == 0) Lose(slot % 4 == 0);
      if (slot % 10 == 1 || slot % 10 == 5) UseList();
      second.stop();
      CheckCounters();
      memory.push_back(ResidentBytes() / (1 << 20));
    }
    Report();
  }
  // A second of the room.
  void Talk() {
    lines += kLinesAnHour / 3600;
    moves += kMovesAnHour / 3600;
    for (; server.joined && lines >= 1; --lines, ++said) server.Say();
    for (; server.joined && moves >= 1; --moves) server.Move();
  }
  // The program comes back by itself.
  void Lose(bool orderly) {
    server.Drop(orderly);
    Await([&] { return server.joined; }, "it does not come back");
    Pass(5'000);
    ++losses;
  }
  void UseList() {
    window.LoadList(folder->File("mails.txt"));
    Require(window.TitleHeader() == "Mail Title [0/100000]", "not loaded", window.TitleHeader());
    window.Click("cmdFind");
    window.Type("cmbSearch", "rare");
    window.Press("cmbSearch", Qt::Key_Return);
    const auto& results = *window.Find<QAbstractItemView>("lstResults").model();
    Await([&] { return results.rowCount() == kRareRows; }, "not found");
    auto& search = window.Find<QWidget>("frmResults");
    search.findChild<QAbstractButton*>("cmdSelect")->click();
    QApplication::activePopupWidget()->close();
    window.Choose("mnuSelectAll");
    search.findChild<QAbstractButton*>("cmdSelected")->click();
    search.close();
    Require(window.TitleHeader() == "Mail Title [50/100000]", "not checked", window.TitleHeader());
    window.Click("cmdRequest");
    asked += kRareRows;
    Await([&] { return server.requests.size() == asked; }, "not all requests came");
    Pass(5'000);
    Require(window.App().Mails().CheckedCount() == 0, "still checked");
  }
  void CheckCounters() {
    Pass(2'000);
    SkipWaits(false);  // what is on its way takes real time
    Pass(50);
    SkipWaits(true);
    const auto& room = window.Find<ChatTextView>("txtChannel");
    Await([&] { return window.Text("lblBufferSizePeak").starts_with("0/"); }, "lines wait");
    const std::string shown = window.Text("lblRTBSizePeak");
    Require(shown.starts_with(std::to_string(room.TextLength()) + "/"), "wrong length", shown);
    Require(room.Log().LineCount() <= static_cast<size_t>(bound), "too many lines");
    const auto* who = window.Find<QAbstractItemView>("lstWho").model();
    Require(static_cast<size_t>(who->rowCount()) == server.others.size() + 1, "not who is there");
  }
  void Report() {
    const size_t settled = memory.size() / 3;
    const auto [least, most] = std::minmax_element(memory.begin() + settled, memory.end());
    const double growth = memory.back() - memory[settled];
    std::printf(
        "%d ticks of 10 ms, %zu lines said, %d connections lost, %zu requests, %zu advertisements\n"
        "%zu turns took 10 ms or more, the longest %.1f ms\n"
        "memory once %d lines were there: %.1f to %.1f MiB, %+.1f MiB from then to the end\n",
        length * (kSlot / 10), said, losses, asked, server.ads, application.longTurns,
        application.longest, bound, *least, *most, growth);
    // What was said as the connection broke may be lost, and a turn that came while it was.
    const std::string told = window.Text("lblSentAd");
    const auto sent =
        static_cast<int>(LeadingNumber(told.substr(told.find_first_of("0123456789"))));
    const auto came = static_cast<int>(server.ads);
    Require(came <= sent && sent <= came + losses, "advertisements", told);
    Require(sent + losses + 2 >= length * (kSlot / 600) / 1000, "too few advertisements", told);
    Require(growth < kMostGrowth && *most - *least < 2 * kMostGrowth, "memory grows");
    Require(application.longest < kLongestTurn, "a turn is too long");
  }

  Application& application;
  int length;  // in slots
  int bound;
  RoomServer server{kOthers};
  std::shared_ptr<test::DataFolder> folder = FolderFor(server, bound, kRows);
  test::WindowDriver window{folder};
  QTimer second;
  double lines = 0;  // that are to be said
  double moves = 0;
  size_t said = 0;
  size_t asked = 0;
  int losses = 0;
  std::vector<double> memory;  // after each slot
};

}  // namespace

std::shared_ptr<test::DataFolder> FolderFor(const RoomServer& server, int chatLines, int rows) {
  const std::string address = "127.0.0.1:" + std::to_string(server.serverPort());
  auto folder = std::make_shared<test::DataFolder>(test::StartState{
      .nick = "me", .server = address, .channels = {"#mailroom"}, .screenName = ""});
  std::string settings =
      folder->Content("brindle.ini") + "[chat options]\r\nlines=" + std::to_string(chatLines) +
      "\r\n[connection options]\r\nConnect again when the connection is lost=1\r\n"
      "[sound options]\r\n";
  for (const char* caption : kSoundCaptions) settings += std::string(caption) + "=0\r\n";
  folder->Write("brindle.ini", settings);
  std::string list = "!MailBot send x y\n";
  for (int row = 1; row <= rows; ++row) {
    list += std::to_string(row) + (row % (kRows / kRareRows) == 1 ? " Rare" : " A common") +
            " title of a mail\n";
  }
  folder->Write("mails.txt", list);
  return folder;
}

void Pass(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

}  // namespace brindle::soak

int main(int argc, char** argv) {
  using namespace brindle::soak;
  const std::vector<std::string> words(argv + 1, argv + argc);
  const std::string first = words.empty() ? "24" : words[0];
  for (const char* name : {"QT_QPA_PLATFORM", "QT_NO_GLIB"}) qputenv(name, "offscreen");
  SkipWaits(first != "victim");
  Application application(argc, argv);
  brindle::ApplyLook(application, brindle::ThemeChoice::kLight);
  if (first == "victim") return BeVictim(words.at(1), words.at(2));
  if (first == "kills") {
    Kill(words.size() > 1 ? std::stoi(words[1]) : 200);
  } else {
    Day(application, std::stod(first)).Run();
  }
  return 0;
}
