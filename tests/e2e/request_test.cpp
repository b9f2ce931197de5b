// Requests as the bot at the other end receives them: a real list file, real clicks, a real server.
#include <QMenu>
#include <QPointer>
#include <QTest>

#include "meeting.h"

namespace brindle::test {
namespace {

struct RequestTest : testing::Test {
  void SetUp() override { ASSERT_TRUE(server.Start()) << server.Error().toStdString(); }
  static void Load(WindowDriver& window, const char* name, const std::string& text) {
    window.Folder().Write(name, text);
    window.LoadList(window.Folder().File(name));
    window.Type("txtListAOLSN", "JaneD");
  }
  IrcServer server{IrcServer::Kind::kNgircd};
};

Texts RequestsFor(const Texts& numbers) {
  Texts requests;
  for (const std::string& number : numbers) {
    requests.push_back("#mailroom :!MailBot send JaneD " + number);
  }
  return requests;
}

TEST_F(RequestTest, SendsEveryRunOnceAtAnEasyPace) {
  Meeting meeting;
  WindowDriver& window = meeting.window;
  ASSERT_NO_FATAL_FAILURE(meeting.Begin(server.Port()));
  Load(window, "mails.txt",
       "My list\r\n!MailBot send x number\r\n1. One red\r\n2) blue\r\n(3) RED two\r\n[4] red\r\n"
       "12 Green\r\n007 Black\r\n20 White\r\n21 White\r\n30 White\r\n31 White\r\n");
  EXPECT_EQ(window.Text("txtListServer"), "MailBot");
  // From the search, by a pair and what is between, by a key, by a click.
  window.Click("cmdFind");
  const QPointer<QWidget> search(&window.Find<QWidget>("frmResults"));
  window.Type("cmbSearch", "Red");
  window.Press("cmbSearch", Qt::Key_Return);
  QTest::mouseClick(search->findChild<QAbstractButton*>("cmdAll"), Qt::LeftButton);
  search->close();
  ASSERT_TRUE(WaitUntil([&] { return search.isNull(); }, 5000));
  EXPECT_EQ(window.Checked(), "1 3 4");
  window.Choose("mnuSelectNone");
  window.ClickCheckBox(0);
  window.ClickCheckBox(2);
  window.Choose("mnuSelectBetween");
  auto& table = window.Find<QTableView>("lstServerList");
  const QPoint title = table.visualRect(table.model()->index(4, 1)).center();
  QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, title);
  QTest::keyClick(&table, Qt::Key_Space);
  for (const int row : {5, 7, 9}) window.ClickCheckBox(row);
  ASSERT_EQ(window.Checked(), "1 2 3 12 007 21 31");
  ASSERT_EQ(window.TitleHeader(), "Mail Title [7/10]");

  // Rows checked in the middle of a run, and a second click, send the rest and nothing twice.
  const qint64 clicked = meeting.bot.Now();
  window.Click("cmdRequest");
  ASSERT_EQ(meeting.Said(2).size(), 2U);
  window.ClickCheckBox(3);
  window.Click("cmdRequest");
  ASSERT_TRUE(window.Tells(kHint, "Requests sent: "));
  const Texts expected = RequestsFor({"1-3", "12-007", "4", "21"});
  EXPECT_EQ(meeting.Said(4), expected);
  EXPECT_EQ(window.Checked(), "31");  // the last row alone
  Texts echoes = {"* Now talking in #mailroom", kRule.substr(1)};
  for (const std::string& text : expected) echoes.push_back("<Wanda> " + text.substr(11));
  EXPECT_EQ(window.Room(), Joined(echoes));
  // Receipt may come late, but never early: this bound holds on a machine of any speed.
  const auto said = meeting.bot.SaidBy("Wanda");
  for (size_t i = 0; i < said.size(); ++i) {
    const size_t gaps = i < 2 ? i : i - 1;  // the second click says its first line at once
    EXPECT_GE(said[i].time - clicked, static_cast<qint64>(gaps) * 200) << i;
  }
}

TEST_F(RequestTest, EndsWithItsReason) {
  const std::string all = "1 3 5 7 9 11";
  const std::string unsent = "the rest";
  const struct {
    const char* name;
    void (*interrupt)(Meeting& meeting);
    const char* told;
    std::string checked;
  } table[] = {
      {"closed", [](Meeting& m) { m.window.App().Window().close(); }, "Stopped after", unsent},
      {"quit", [](Meeting& m) { m.window.Leave(); }, "The session ended", all},
      {"other list", [](Meeting& m) { Load(m.window, "other.txt", "!O send x y\r\n1 A\r\n"); },
       "The list was replaced after", ""},
      {"kicked", [](Meeting& m) { m.bot.Send("KICK #mailroom Wanda :enough"); },
       "The room was left (kicked by MailBot: enough)", unsent},
      {"other room", [](Meeting& m) { m.window.AskToJoin(1); }, "The room was left", unsent},
      // Refused lines, and those shortly before, are asked for anew.
      {"moderated", [](Meeting& m) { m.bot.Send("MODE #mailroom +m"); },
       "The room takes no requests (", all},
  };
  std::string list = "!MailBot send x y\r\n";
  for (int i = 1; i <= 12; ++i) list += std::to_string(i) + ". Mail\r\n";
  for (const auto& row : table) {
    SCOPED_TRACE(row.name);
    Meeting meeting;
    ASSERT_NO_FATAL_FAILURE(meeting.Begin(server.Port()));
    Load(meeting.window, "mails.txt", list);
    for (int i = 0; i < 12; i += 2) meeting.window.ClickCheckBox(i);
    meeting.window.Click("cmdRequest");
    ASSERT_GE(meeting.Said(2).size(), 2U);
    row.interrupt(meeting);
    ASSERT_TRUE(meeting.window.Tells(kHint, row.told)) << meeting.window.Text(kHint);
    LetTicksPass(5);  // for what is on its way to the view
    const std::string checked = meeting.window.Checked();
    const int echoes = Count(meeting.window.Room(), "<Wanda> !MailBot");
    ASSERT_LT(echoes, 6);
    LetTicksPass(25);
    EXPECT_EQ(Count(meeting.window.Room(), "<Wanda> !MailBot"), echoes);
    Texts numbers, rest;
    for (int i = 0; i < 6; ++i) {
      (i < echoes ? numbers : rest).push_back(std::to_string(2 * i + 1));
    }
    std::string left;
    for (const std::string& number : rest) left += (left.empty() ? "" : " ") + number;
    EXPECT_EQ(checked, row.checked == unsent ? left : row.checked);
    // The server keeps what it refuses to itself.
    const Texts said = meeting.Said(row.checked == all ? 2 : static_cast<size_t>(echoes));
    numbers.resize(std::min(numbers.size(), said.size()));
    EXPECT_EQ(Texts(said.begin(), said.begin() + static_cast<long>(numbers.size())),
              RequestsFor(numbers));
  }
}

}  // namespace
}  // namespace brindle::test
