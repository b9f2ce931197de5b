// What a bot in the room of a real server receives, byte for byte, of what the user says and asks
// for, and what the room view shows of it. Real clicks, a real list file.
#include <QApplication>
#include <QClipboard>
#include <QPointer>
#include <QTest>

#include "meeting.h"

namespace brindle::test {
namespace {

struct RoomTest : testing::Test {
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
  for (const std::string& number : numbers)
    requests.push_back(kTo + "!MailBot send JaneD " + number);
  return requests;
}

TEST_F(RoomTest, SelectedMailsAreRequestedOnceAtAnEasyPace) {
  Meeting meeting;
  WindowDriver& window = meeting.window;
  ASSERT_NO_FATAL_FAILURE(meeting.Begin(server.Port()));
  Load(window, "mails.txt",
       "My list\r\n!MailBot send x number\r\n1. One red\r\n2) blue\r\n(3) RED two\r\n[4] red\r\n"
       "12 Green\r\n007 Black\r\n20 White\r\n21 White\r\n30 White\r\n31 White\r\n");
  window.Click("cmdFind");
  window.Type("cmbSearch", "Red");
  window.Press("cmbSearch", Qt::Key_Return);
  window.Click("cmdAll");
  window.Click("cmdReturn");
  EXPECT_EQ(window.Checked(), "1 3 4");
  window.Choose("mnuSelectNone");
  window.ClickCheckBox(0);
  window.ClickCheckBox(2);
  window.Choose("mnuSelectBetween");
  for (const int row : {4, 5, 7, 9}) window.ClickCheckBox(row);
  EXPECT_EQ(window.TitleHeader(), "Mail Title [7/10]");
  // A row checked in the middle of a run, and a second click, send the rest and nothing twice.
  const qint64 clicked = meeting.bot.Now();
  window.Click("cmdRequest");
  ASSERT_EQ(meeting.Said(2).size(), 2U);
  window.ClickCheckBox(3);
  window.Click("cmdRequest");
  ASSERT_TRUE(window.Tells(kHint, "Requests sent: "));
  ASSERT_EQ(meeting.Said(4), RequestsFor({"1-3", "12-007", "4", "21"}));
  EXPECT_EQ(window.Checked(), "31");  // the last row alone
  // Receipt may come late, but never early. The second click says its first line at once.
  const auto heard = meeting.bot.SaidBy("Wanda");
  const qint64 earliest[] = {0, 200, 200, 400};
  for (size_t i = 0; i < heard.size(); ++i) EXPECT_GE(heard[i].time - clicked, earliest[i]) << i;
}

TEST_F(RoomTest, ARunEndsWithItsReason) {
  const std::string all = "1 3 5 7 9 11 ";
  const std::string rest = "what was not sent";
  const struct {
    void (*interrupt)(Meeting& meeting);
    const char* told;
    std::string checked;
  } table[] = {
      {[](Meeting& m) { m.window.Click("cmdRequestStop"); }, "Stopped after", rest},
      {[](Meeting& m) { m.window.Leave(); }, "The session ended", all},
      {[](Meeting& m) { Load(m.window, "other.txt", "!O send x y\r\n1 A\r\n"); },
       "The list was replaced after", ""},
      {[](Meeting& m) { m.bot.Send("KICK #mailroom Wanda :enough"); },
       "The room was left (kicked by MailBot: enough)", rest},
      {[](Meeting& m) { m.window.AskToJoin(1); }, "The room was left", rest},
      // Refused lines, and those shortly before, are asked for anew.
      {[](Meeting& m) { m.bot.Send("MODE #mailroom +m"); }, "The room takes no requests (", all},
  };
  std::string list = "!MailBot send x y\r\n";
  for (int i = 1; i <= 12; ++i) list += std::to_string(i) + ". Mail\r\n";
  for (const auto& row : table) {
    SCOPED_TRACE(row.told);
    Meeting meeting;
    WindowDriver& window = meeting.window;
    ASSERT_NO_FATAL_FAILURE(meeting.Begin(server.Port()));
    Load(window, "mails.txt", list);
    for (int i = 0; i < 12; i += 2) window.ClickCheckBox(i);
    window.Click("cmdRequest");
    ASSERT_GE(meeting.Said(2).size(), 2U);
    row.interrupt(meeting);
    ASSERT_TRUE(window.Tells(kHint, row.told)) << window.Text(kHint);
    LetTicksPass(25);  // another line would have gone
    const int sent = Count(window.Room(), "<Wanda> !MailBot");
    ASSERT_LT(sent, 6);
    Texts numbers;
    std::string left;
    for (int i = 0; i < 6; ++i) {
      const std::string number = std::to_string(2 * i + 1);
      if (i < sent)
        numbers.push_back(number);
      else
        left += number + " ";
    }
    const std::string checked = window.Checked();
    EXPECT_EQ(checked.empty() ? "" : checked + " ", row.checked == rest ? left : row.checked);
    // The server keeps what it refuses to itself.
    const size_t heard = row.checked == all ? 2 : numbers.size();
    const Texts said = meeting.Said(heard);
    numbers.resize(heard);
    ASSERT_GE(said.size(), heard);
    EXPECT_EQ(Texts(said.begin(), said.begin() + static_cast<long>(heard)), RequestsFor(numbers));
  }
}

TEST_F(RoomTest, WhatIsTypedPastedAndAnnounced) {
  Meeting meeting;
  auto& [window, bot] = meeting;
  ASSERT_NO_FATAL_FAILURE(meeting.Begin(server.Port()));
  window.ShowTab(Tab::kRoom);
  for (const char* line : {"hello  room", "/msg MailBot psst  now"}) {
    window.Type("cmbSend", line);
    window.Press("cmbSend", Qt::Key_Return);
  }
  QApplication::clipboard()->setText("one\r\n\r\ntwo\n");
  QTest::keySequence(window.Find<QComboBox>("cmbSend").lineEdit(), QKeySequence::Paste);
  window.Click("cmdSend");
  Texts said = {kTo + "hello  room", "MailBot :psst  now", kTo + "one", kTo + "two"};
  EXPECT_EQ(meeting.Said(4), said);
  EXPECT_TRUE(window.ShowsInRoom(
      "\n<Wanda> hello  room\nYou tell MailBot, 'psst  now'\n<Wanda> one\n<Wanda> two"));

  window.App().Settings().scanChatForServers = true;
  window.App().Settings().requestAccessCode = true;
  window.Type("txtInfoAOLSN", "Jane D");
  bot.Say(kRoom, "/notice \002MailBot\002 send list");
  EXPECT_TRUE(
      window.ShowsInRoom("\n<MailBot> /notice MailBot send list\n::( ATTENTION ):: ADDED "
                         "MAILBOT REQUESTING ACCESSCODE.\n<Wanda> !mailbot send Jane D"));
  EXPECT_EQ(window.Items("cmbServers"), "mailbot");
  window.Type("cmbServers", "Bot");
  window.Type("txtAccessCode", "4711");
  for (const char* item :
       {"mnuCommandsVerify", "mnuCommandsList", "mnuCommandsStatus", "mnuCommandsRequest"}) {
    window.Choose(item);
  }
  for (const char* text :
       {"!mailbot send Jane D accesscode", "!Bot verify Jane D 4711", "!Bot send Jane D list",
        "!Bot send Jane D status", "!Bot send Jane D accesscode"}) {
    said.push_back(kTo + text);
  }
  EXPECT_EQ(meeting.Said(said.size()), said);
}

TEST_F(RoomTest, ManualRequestsAndTheAdvertisement) {
  Meeting meeting;
  WindowDriver& window = meeting.window;
  ASSERT_NO_FATAL_FAILURE(meeting.Begin(server.Port()));
  window.ShowTab(Tab::kList);
  window.Type("txtListAOLSN", "Jane D");
  window.Click("cmdManualRequest");
  const QPointer<QWidget> form(&window.Find<QWidget>("frmManualRequest"));
  const auto request = [&](const Texts& numbers) {
    for (const std::string& number : numbers) {
      window.Type("cmbRequestFrom", "Bot");
      window.Type("txtRequest", QString::fromStdString(number));
      window.Press("txtRequest", Qt::Key_Return);
    }
    QTest::mouseClick(form->findChild<QAbstractButton*>("cmdRequest"), Qt::LeftButton);
  };
  request({"12", "7"});
  Texts said = {kTo + "!Bot send Jane D 12", kTo + "!Bot send Jane D 7"};
  EXPECT_EQ(meeting.Said(2), said);
  // Closing the window in the middle of a run ends it.
  request({"1", "2", "3", "4", "5"});
  form->close();
  ASSERT_TRUE(WaitUntil([&] { return form.isNull(); }, 5000));

  auto& timer = window.Find<QTimer>("tmrAD");
  window.ShowTab(Tab::kInfo);
  window.Click("cmdIdle");
  EXPECT_EQ(window.Text("cmdIdle"), timer.isActive() && timer.interval() == 60000 ? "Back" : "");
  QMetaObject::invokeMethod(&timer, "timeout");
  ASSERT_TRUE(WaitUntil([&] {
    said = meeting.Said(5);
    return said.back().starts_with(kTo + "\0035Here's what people are saying");
  }));
  EXPECT_LT(said.size(), 9U);
  const std::string& first = said[said.size() - 2];
  EXPECT_TRUE(first.starts_with(kTo + "\0035Check out \0039Brindle \0035for your")) << first;
  EXPECT_EQ(window.Text("lblSentAd"), "Sent advertise 1 time(s)");
}

TEST_F(RoomTest, ALostServerIsComeBackToAndTheRunGoesOn) {
  Meeting meeting;
  WindowDriver& window = meeting.window;
  window.App().Settings().reconnect = true;
  ASSERT_NO_FATAL_FAILURE(meeting.Begin(server.Port()));
  Load(window, "mails.txt", "!MailBot send x y\n1 a\n2 b\n3 c\n4 d\n5 e\n6 f\n7 g\n");
  for (const int row : {0, 2, 4}) window.ClickCheckBox(row);
  window.Click("cmdRequest");
  ASSERT_EQ(meeting.Said(1).size(), 1U);
  server.Kill();
  EXPECT_TRUE(window.Tells("barStatusPanel1", "Status - Connecting again in "));
  EXPECT_FALSE(window.Find<QWidget>("cmdConnectCancel").isHidden());
  ASSERT_TRUE(server.Start());
  RawClient bot("MailBot");
  bot.Begin(server.Port());
  ASSERT_TRUE(bot.WaitForWelcome() && bot.Join(kRoom));
  window.Boxes().questionAnswers = {true};
  ASSERT_TRUE(window.Tells(kHint, "Requests sent: 3"));
  EXPECT_EQ(window.Boxes().questions.back().text,
            "The requests to MailBot were interrupted. Go on with the 3 mails that are left?");
  EXPECT_TRUE(WaitUntil([&] { return bot.SaidBy("Wanda").size() == 3; }));
}

}  // namespace
}  // namespace brindle::test
