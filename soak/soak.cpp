// A day of the whole program in minutes: a busy room, lists, requests, lost connections; and that
// memory, counters and the time between two events stay as they must.
//   soak [HOURS]      the day, or a part of it
//   soak kills [N]    kills; see kills.cpp

#include "soak/soak.h"

#include <unistd.h>
#include <QAbstractItemView>
#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <array>
#include <fstream>

#include "ui/look.h"

namespace brindle::soak {
namespace {

constexpr double kLinesAnHour = 500'000 / 24.0;
constexpr double kMovesAnHour = 2'000;
constexpr int kOthers = 5'000;
constexpr int kRows = 100'000;
constexpr int kRareRows = 50;
constexpr int kSlot = 864'000;        // milliseconds, a hundredth of a day
constexpr double kLongestTurn = 100;  // milliseconds
constexpr double kMostGrowth = 16;    // MiB, after the bound was reached

// What the program computes between two events, which is what a user would wait.
class Turns {
 public:
  void Mark() {
    const std::int64_t now = WorkedMicroseconds();
    const std::int64_t turn = now - last_;
    last_ = now;
    ++counts_[std::min<size_t>(static_cast<size_t>(turn) / 100, counts_.size() - 1)];
    ++all_;
    longest_ = std::max(longest_, turn);
  }
  // So many of a thousand are at most that long, in milliseconds.
  double Of(int thousandths) const {
    size_t left = all_ * static_cast<size_t>(thousandths) / 1000;
    size_t bucket = 0;
    while (bucket + 1 < counts_.size() && left >= counts_[bucket]) left -= counts_[bucket++];
    return static_cast<double>(bucket + 1) / 10;
  }
  double Longest() const { return static_cast<double>(longest_) / 1000; }
  void Restart() { *this = Turns(); }

 private:
  std::int64_t last_ = WorkedMicroseconds();
  std::int64_t longest_ = 0;
  size_t all_ = 0;
  std::array<size_t, 10'000> counts_{};
};

struct Application : QApplication {
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    turns.Mark();
    const bool done = QApplication::notify(receiver, event);
    turns.Mark();
    return done;
  }
  Turns turns;
};

double Mebibytes() {
  long all = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> all >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

class Day {
 public:
  Day(Application& application, double hours)
      : application_(application),
        slots_(static_cast<int>(hours * 3'600'000 / kSlot)),
        bound_(std::clamp(static_cast<int>(hours * kLinesAnHour / 5), kFewestChatLines, 100'000)) {}

  int Run() {
    WriteList();
    window_.Boxes().notices.clear();
    window_.Type("txtListAOLSN", "Jane");
    Require(window_.Register("me", server_.serverPort()), "no session");
    Require(Enter(), "the room is not entered");
    window_.ShowTab(Tab::kInfo);
    window_.Click("cmdIdle");
    second_.callOnTimeout([this] { Second(); });
    application_.turns.Restart();
    for (int slot = 1; slot <= slots_; ++slot) {
      second_.start(1000);
      window_.ShowTab(slot % 4 == 0 ? Tab::kOptions : Tab::kRoom);
      Pass(kSlot);
      if (slot % 2 == 0) Lose(slot % 4 == 0);
      if (slot % 10 == 1 || slot % 10 == 5) UseList();
      memory_.push_back(Mebibytes());
      CheckCounters();
    }
    return Report();
  }

 private:
  const Session& State() { return window_.App().CurrentSession(); }
  void WriteList() {
    std::string list = "!MailBot send x y\n";
    for (int row = 1; row <= kRows; ++row) {
      list += std::to_string(row) + (row % (kRows / kRareRows) == 1 ? " Rare" : " A common") +
              " title of mail " + std::to_string(row * 7919 % kRows) + "\n";
    }
    folder_->Write("mails.txt", list);
  }
  bool Enter() {
    return window_.Join(0) && test::WaitUntil([this] { return server_.joined; }, 60'000);
  }
  void Second() {
    for (lines_ += kLinesAnHour / 3600; server_.joined && lines_ >= 1; --lines_, ++said_) {
      server_.Say();
    }
    for (moves_ += kMovesAnHour / 3600; server_.joined && moves_ >= 1; --moves_) server_.Move();
  }
  // The program comes back by itself.
  void Lose(bool orderly) {
    const size_t before = server_.sessions;
    server_.Drop(orderly);
    Require(test::WaitUntil([&] { return server_.sessions > before; }, 600'000),
            "it does not come back");
    Require(test::WaitUntil([&] { return !State().currentRoom.empty(); }, 60'000),
            "not in the room");
    Pass(5'000);
    ++losses_;
  }
  void UseList() {
    window_.LoadList(folder_->File("mails.txt"));
    Require(window_.TitleHeader() == "Mail Title [0/100000]", "not loaded", window_.TitleHeader());
    window_.Click("cmdFind");
    window_.Type("cmbSearch", "rare");
    window_.Press("cmbSearch", Qt::Key_Return);
    const auto& results = *window_.Find<QAbstractItemView>("lstResults").model();
    Require(test::WaitUntil([&] { return results.rowCount() == kRareRows; }), "not found");
    auto& search = window_.Find<QWidget>("frmResults");
    search.findChild<QAbstractButton*>("cmdSelect")->click();
    QApplication::activePopupWidget()->close();
    window_.Choose("mnuSelectAll");
    search.findChild<QAbstractButton*>("cmdSelected")->click();
    search.close();
    const std::string header = window_.TitleHeader();
    Require(header == "Mail Title [50/100000]", "not checked", header);
    const size_t before = server_.requests.size();
    window_.Click("cmdRequest");
    Require(test::WaitUntil([&] { return server_.requests.size() == before + kRareRows; }, 600'000),
            "not all requests came", std::to_string(server_.requests.size() - before));
    Pass(5'000);
    Require(window_.App().Mails().CheckedCount() == 0, "still checked");
    ++lists_;
  }
  void CheckCounters() {
    second_.stop();
    Pass(2'000);
    SkipWaits(false);  // what is on its way takes real time
    Pass(50);
    SkipWaits(true);
    auto& room = window_.Find<ChatTextView>("txtChannel");
    Require(test::WaitUntil([&] { return window_.Text("lblBufferSizePeak").starts_with("0/"); },
                            60'000),
            "lines wait for ever", window_.Text("lblBufferSizePeak"));
    const std::string shown = window_.Text("lblRTBSizePeak");
    Require(shown.starts_with(std::to_string(room.TextLength()) + "/"), "wrong length", shown);
    Require(room.Log().LineCount() <= static_cast<size_t>(bound_), "too many lines");
    const auto nicks =
        static_cast<size_t>(window_.Find<QAbstractItemView>("lstWho").model()->rowCount());
    Require(nicks == server_.Others() + 1, "not who is there",
            std::to_string(nicks) + " for " + std::to_string(server_.Others()));
  }
  int Report() {
    const size_t settled = memory_.size() / 3;
    const auto [least, most] = std::minmax_element(memory_.begin() + settled, memory_.end());
    const double growth = memory_.back() - memory_[settled];
    const Turns& turns = application_.turns;
    std::printf(
        "%d ticks of 10 ms, %zu lines said, %zu of at most %d kept, %d connections lost, %d lists, "
        "%zu requests, %zu advertisements\n"
        "turns: p99 %.1f ms, p99.9 %.1f ms, longest %.1f ms\n"
        "memory once the bound was reached: %.1f to %.1f MiB, %+.1f MiB from then to the end\n",
        slots_ * (kSlot / 10), said_, window_.Find<ChatTextView>("txtChannel").Log().LineCount(),
        bound_, losses_, lists_, server_.requests.size(), server_.ads, turns.Of(990), turns.Of(999),
        turns.Longest(), *least, *most, growth);
    // What was said as the connection broke may be lost.
    const auto told = window_.Text("lblSentAd");
    const size_t sent = std::stoul("0" + told.substr(told.find_first_of("0123456789")));
    Require(server_.ads <= sent && sent <= server_.ads + static_cast<size_t>(losses_), "ads", told);
    Require(
        sent + 2 + static_cast<size_t>(losses_) >= static_cast<size_t>(slots_) * kSlot / 600'000,
        "too few advertisements", told);
    Require(growth < kMostGrowth && *most - *least < 2 * kMostGrowth, "memory grows");
    Require(turns.Longest() < kLongestTurn, "a turn is too long");
    return 0;
  }

  Application& application_;
  int slots_;
  int bound_;
  RoomServer server_{kOthers};
  std::shared_ptr<test::DataFolder> folder_ = FolderFor(server_, bound_);
  test::WindowDriver window_{folder_};
  QTimer second_;
  double lines_ = 0;
  double moves_ = 0;
  size_t said_ = 0;
  int losses_ = 0;
  int lists_ = 0;
  std::vector<double> memory_;  // after each slot
};

}  // namespace

std::shared_ptr<test::DataFolder> FolderFor(const RoomServer& server, int chatLines) {
  auto folder = std::make_shared<test::DataFolder>(
      test::StartState{.nick = "me",
                       .server = "127.0.0.1:" + std::to_string(server.serverPort()),
                       .channels = {"#mailroom"},
                       .screenName = "Jane"});
  std::string settings = folder->Content("brindle.ini") +
                         "[chat options]\r\nlines=" + std::to_string(chatLines) +
                         "\r\n[connection options]\r\nConnect again when the connection is "
                         "lost=1\r\n[sound options]\r\n";
  for (const char* caption : kSoundCaptions) settings += std::string(caption) + "=0\r\n";
  folder->Write("brindle.ini", settings);
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
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_NO_GLIB", "1");
  const bool isVictim = words.size() == 3 && words[0] == "victim";
  SkipWaits(!isVictim);
  Application application(argc, argv);
  brindle::ApplyLook(application, brindle::ThemeChoice::kLight);
  if (isVictim) return BeVictim(words[1], words[2]);
  if (!words.empty() && words[0] == "kills") {
    Kill(words.size() > 1 ? std::stoi(words[1]) : 200);
    return 0;
  }
  return Day(application, words.empty() ? 24 : std::stod(words[0])).Run();
}
