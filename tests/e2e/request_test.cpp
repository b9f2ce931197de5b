// Requests and server commands as the bot at the other end receives them: a real list file, real
// clicks, a real IRC server.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <array>

#include "support/irc_server.h"
#include "support/raw_client.h"
#include "support/wait.h"
#include "support/window_driver.h"

namespace brindle::test {
namespace {

using Texts = std::vector<std::string>;

constexpr qint64 kPauseMs = 200;

constexpr const char* kListFile =
    "MailBot's list of mails\r\n"
    "!MailBot send YourName number\r\n"
    "1. First\r\n"
    "2) Second mail\r\n"
    "(3) Third\r\n"
    "[7] Seventh\r\n"
    "12 Twelfth\r\n"
    "007 With noughts\r\n"
    "20 Twentieth\r\n"
    "21 Twenty-first\r\n"
    "30 Thirtieth\r\n"
    "31 Thirty-first\r\n"
    "40 Fortieth\r\n"
    "41 The last\r\n";
constexpr const char* kRule =
    "{#c0c0c0}-----{#808080}----------{#c0c0c0}----------------------------------------"
    "{#808080}----------{#c0c0c0}-----";
constexpr const char* kOtherFile = "!OtherBot send x y\r\n100 Other\r\n101 More\r\n";

// Measures for how long the event loop was kept from turning.
class LoopWatch {
 public:
  LoopWatch() {
    since_.start();
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
      ++turns_;
      longest_ = std::max(longest_, since_.restart());
    });
    timer_.start(5);
  }
  int Turns() const { return turns_; }
  qint64 LongestStall() const { return longest_; }

 private:
  QTimer timer_;
  QElapsedTimer since_;
  int turns_ = 0;
  qint64 longest_ = 0;
};

// Wanda at the window and the bot, in one room, with a list loaded.
class MailRoom {
 public:
  explicit MailRoom(IrcServer::Kind kind) : server_(kind) {}

  void Open() {
    ASSERT_TRUE(server_.Start()) << server_.Error().toStdString();
    bot.Begin(server_.Port());
    ASSERT_TRUE(window.Register("Wanda", server_.Port()));
    ASSERT_TRUE(bot.WaitForWelcome());
    ASSERT_TRUE(bot.Join("#mailroom"));
    ASSERT_TRUE(window.Join(0));
    window.LoadList(File("list.txt", kListFile));
    ASSERT_EQ(window.TitleHeader(), "Mail Title [0/12]");
    ASSERT_EQ(window.Find<QLineEdit>("txtListServer").text(), "MailBot");
    window.Type("txtListAOLSN", "JaneD");
  }

  QString File(const QString& name, const char* text) {
    QFile file(folder_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    return file.fileName();
  }

  // Everything said in the room so far, with the moments of receipt.
  std::vector<RawClient::Line> Said() const {
    std::vector<RawClient::Line> said;
    for (const RawClient::Line& line : bot.Lines()) {
      const size_t at = line.text.find(" PRIVMSG #mailroom :");
      if (at == std::string::npos || !line.text.starts_with(":Wanda!")) continue;
      said.push_back({line.time, line.text.substr(at + 1)});
    }
    return said;
  }
  Texts Requests() const {
    Texts texts;
    for (const RawClient::Line& line : Said()) {
      if (line.text.find(":!") != std::string::npos) texts.push_back(line.text);
    }
    return texts;
  }

  // Says goodbye, so that the bot has received all there is once it sees that.
  void Leave() {
    window.ShowTab(Tab::kConnection);
    window.Click("cmdConnect");
  }

 private:
  IrcServer server_;
  QTemporaryDir folder_;

 public:
  WindowDriver window{{"#mailroom", "#second"}};
  RawClient bot{"MailBot"};
};

std::string RequestFor(const std::string& what) {
  return "PRIVMSG #mailroom :!MailBot send JaneD " + what;
}

struct Run {
  const char* name;
  IrcServer::Kind kind;
  bool deselect;
  std::vector<int> checkedAlone;  // beside rows 0 to 2, checked by Between
  Texts requested;
  const char* checkedBefore;
  const char* header;
};

std::ostream& operator<<(std::ostream& out, const Run& run) { return out << run.name; }

// What the bot says in the middle of a run, whose place in the room is any.
std::string WithoutAnswer(std::string transcript) {
  const std::string answer = "\n{#000000}<MailBot> coming up";
  const size_t at = transcript.find(answer);
  return at == std::string::npos ? transcript : transcript.erase(at, answer.size());
}

class RequestTest : public testing::TestWithParam<Run> {};

TEST_P(RequestTest, SendsEveryRunOnceAtAnEasyPace) {
  MailRoom room(GetParam().kind);
  ASSERT_NO_FATAL_FAILURE(room.Open());
  WindowDriver& window = room.window;
  window.App().Settings().deselectAfterRequested = GetParam().deselect;

  window.ClickCheckBox(0);
  window.ClickCheckBox(2);
  window.Click("cmdSelect");
  window.Choose("mnuSelectBetween");
  window.Find<QMenu>("mnuSelect").close();
  auto& table = window.Find<QTableView>("lstServerList");
  for (const int row : GetParam().checkedAlone) {
    if (row % 2 == 0) {
      window.ClickCheckBox(row);
      continue;
    }
    const QPoint title = table.visualRect(table.model()->index(row, 1)).center();
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, title);
    QTest::keyClick(&table, Qt::Key_Space);
  }
  ASSERT_EQ(window.Checked(), GetParam().checkedBefore);
  ASSERT_EQ(window.TitleHeader(), GetParam().header);

  // The window lives during the pauses: it shows what is said meanwhile.
  bool shownMeanwhile = false;
  const Once answer([&] { return !room.Requests().empty(); },
                    [&] { room.bot.Say("#mailroom", "coming up"); });
  const Once look([&] { return window.Room().find("<MailBot> coming up") != std::string::npos; },
                  [&] { shownMeanwhile = true; });
  const LoopWatch watch;
  const qint64 clicked = room.bot.Now();
  window.Click("cmdRequest");
  const int turns = watch.Turns();
  EXPECT_TRUE(shownMeanwhile);
  EXPECT_GT(turns, 20);

  Texts expected;
  std::string shown = "\n{#008000}* Now talking in #mailroom\n" + std::string(kRule);
  for (const std::string& what : GetParam().requested) {
    expected.push_back(RequestFor(what));
    shown += "\n{#000000}<Wanda> !MailBot send JaneD " + what;
  }
  EXPECT_EQ(WithoutAnswer(window.Room()), shown);
  EXPECT_EQ(window.Checked(), GetParam().deselect ? "" : GetParam().checkedBefore);
  EXPECT_EQ(window.TitleHeader(), GetParam().deselect ? "Mail Title [0/12]" : GetParam().header);
  room.Leave();
  ASSERT_TRUE(room.bot.WaitForLine(" QUIT"));
  ASSERT_EQ(room.Requests(), expected);

  // Receipt may come late, but never early: this bound holds on a machine of any speed. For single
  // gaps the lateness must be allowed for; 100 ms are for the server's own.
  const auto said = room.Said();
  const qint64 slack = watch.LongestStall() + 100;
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_GE(said[i].time - clicked, static_cast<qint64>(i) * kPauseMs) << i;
    const qint64 gap = i == 0 ? kPauseMs : said[i].time - said[i - 1].time;
    EXPECT_GE(gap, kPauseMs - slack) << i;
  }
}

INSTANTIATE_TEST_SUITE_P(Runs, RequestTest,
                         testing::Values(
                             // A last row that is checked alone is never requested.
                             Run{"LastAlone",
                                 IrcServer::Kind::kNgircd,
                                 true,
                                 {4, 5, 7, 9, 11},
                                 {"1-3", "12-007", "21", "31"},
                                 "1 2 3 12 007 21 31 41",
                                 "Mail Title [8/12]"},
                             Run{"LastInARun",
                                 IrcServer::Kind::kInspircd,
                                 false,
                                 {6, 8, 10, 11},
                                 {"1-3", "20", "30", "40-41"},
                                 "1 2 3 20 30 40 41",
                                 "Mail Title [7/12]"}),
                         [](const auto& run) { return run.param.name; });

// What may happen while requests are being sent.
struct Interruption {
  const char* name;
  void (*interrupt)(MailRoom& room);
  // What the user does afterwards so that the bot sees `seen` behind all requests.
  void (*follow)(MailRoom& room);
  const char* seen;
  bool restStaysChecked;
};

std::ostream& operator<<(std::ostream& out, const Interruption& interruption) {
  return out << interruption.name;
}

class InterruptedRequestTest : public testing::TestWithParam<Interruption> {};

TEST_P(InterruptedRequestTest, EndsAndLeavesTheRestAlone) {
  const Texts numbers = {"1", "3", "12", "20", "30", "40"};
  MailRoom room(IrcServer::Kind::kNgircd);
  ASSERT_NO_FATAL_FAILURE(room.Open());
  for (int row = 0; row < 12; row += 2) room.window.ClickCheckBox(row);
  const Once interruption([&] { return room.Requests().size() >= 2; },
                          [&] { GetParam().interrupt(room); });
  room.window.Click("cmdRequest");
  ASSERT_TRUE(interruption.HasRun());
  const std::string rest = room.window.Checked();
  const std::string header = room.window.TitleHeader();
  GetParam().follow(room);
  ASSERT_TRUE(room.bot.WaitForLine(GetParam().seen));

  // A slow machine may send one more before the interruption has its effect.
  const size_t sent = room.Requests().size();
  ASSERT_GE(sent, 2U);
  ASSERT_LT(sent, numbers.size());
  Texts expected;
  std::string unsent;
  for (size_t i = 0; i < numbers.size(); ++i) {
    if (i < sent) {
      expected.push_back(RequestFor(numbers[i]));
    } else {
      unsent += (unsent.empty() ? "" : " ") + numbers[i];
    }
  }
  EXPECT_EQ(room.Requests(), expected);
  EXPECT_EQ(rest, GetParam().restStaysChecked ? unsent : "");
  const size_t left = numbers.size() - sent;
  EXPECT_EQ(header, GetParam().restStaysChecked ? "Mail Title [" + std::to_string(left) + "/12]"
                                                : "Mail Title [0/2]");
}

INSTANTIATE_TEST_SUITE_P(
    Interruptions, InterruptedRequestTest,
    testing::Values(
        Interruption{"WindowClosed", [](MailRoom& room) { room.window.App().Window().close(); },
                     [](MailRoom&) {}, " QUIT", true},
        Interruption{"Disconnected", [](MailRoom& room) { room.Leave(); }, [](MailRoom&) {},
                     " QUIT", true},
        Interruption{
            "OtherListLoaded",
            [](MailRoom& room) { room.window.LoadList(room.File("other.txt", kOtherFile)); },
            [](MailRoom& room) { room.Leave(); }, " QUIT", false},
        Interruption{"Kicked",
                     [](MailRoom& room) { room.bot.Send("KICK #mailroom Wanda :enough"); },
                     [](MailRoom& room) {
                       room.bot.SkipReceived();
                       EXPECT_TRUE(room.window.Join(0));
                     },
                     " JOIN ", true},
        Interruption{"RoomSwitched", [](MailRoom& room) { room.window.AskToJoin(1); },
                     [](MailRoom&) {}, " PART ", true}),
    [](const auto& interruption) { return interruption.param.name; });

TEST(RequestAgain, ASecondClickSendsTheRestAndNothingTwice) {
  MailRoom room(IrcServer::Kind::kNgircd);
  ASSERT_NO_FATAL_FAILURE(room.Open());
  for (int row = 0; row < 10; row += 2) room.window.ClickCheckBox(row);
  const Once again([&] { return room.Requests().size() >= 2; },
                   [&] { room.window.Click("cmdRequest"); });
  room.window.Click("cmdRequest");
  ASSERT_TRUE(again.HasRun());
  EXPECT_EQ(room.window.Checked(), "");
  room.Leave();
  ASSERT_TRUE(room.bot.WaitForLine(" QUIT"));
  EXPECT_EQ(room.Requests(), (Texts{RequestFor("1"), RequestFor("3"), RequestFor("12"),
                                    RequestFor("20"), RequestFor("30")}));
}

TEST(ServerCommandTest, TheBotReceivesTheFourCommands) {
  constexpr std::array kItems = {"mnuCommandsRequest", "mnuCommandsVerify", "mnuCommandsList",
                                 "mnuCommandsStatus"};
  MailRoom room(IrcServer::Kind::kNgircd);
  ASSERT_NO_FATAL_FAILURE(room.Open());
  WindowDriver& window = room.window;
  window.ShowTab(Tab::kInfo);
  window.Type("txtInfoAOLSN", "Jane D");
  window.Type("cmbServers", "MailBot");
  window.Type("txtAccessCode", "4711");
  for (const char* item : kItems) {
    window.Click("cmdCommands");
    window.Choose(item);
    window.Find<QMenu>("mnuCommands").close();
  }
  window.Type("txtInfoAOLSN", "");
  for (const char* item : kItems) window.Choose(item);

  const Texts said = {"!MailBot send Jane D accesscode", "!MailBot verify Jane D 4711",
                      "!MailBot send Jane D list", "!MailBot send Jane D status",
                      "!MailBot verify  4711"};
  std::string echoes;
  Texts expected;
  for (const std::string& text : said) {
    echoes += "\n{#000000}<Wanda> " + text;
    expected.push_back("PRIVMSG #mailroom :" + text);
  }
  ASSERT_TRUE(window.ShowsInRoom("verify  4711"));
  EXPECT_TRUE(window.Room().ends_with(echoes)) << window.Room();
  room.Leave();
  ASSERT_TRUE(room.bot.WaitForLine(" QUIT"));
  EXPECT_EQ(room.Requests(), expected);

  ASSERT_TRUE(window.ShowsInStatus("Disconnected..."));
  window.Choose("mnuCommandsVerify");
  std::vector<FakeDialogs::Shown> notices(
      3, {Icon::kInformation, "You must enter an AOL Screen Name for this to work."});
  notices.push_back(
      {Icon::kInformation, "You must first connect to a server before entering a room."});
  EXPECT_EQ(window.Boxes().notices, notices);
}

}  // namespace
}  // namespace brindle::test
