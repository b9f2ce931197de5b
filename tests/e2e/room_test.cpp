// What a bot in the room of a real server receives, byte for byte, of what the user says and asks
// for, and what the room view shows of it. Real clicks, a real list file.
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QTest>

#include "meeting.h"

namespace brindle::test {
namespace {

struct RoomTest : testing::Test {
  void SetUp() override {
    ASSERT_TRUE(server.Start()) << server.Error().toStdString();
    ASSERT_NO_FATAL_FAILURE(meeting.Begin(server.Port()));
  }
  IrcServer server{IrcServer::Kind::kNgircd};
  Meeting meeting;
  WindowDriver& window = meeting.window;
  Texts said;  // what is expected
};

TEST_F(RoomTest, SelectedMailsAreRequestedOnceAtAnEasyPace) {
  window.Folder().Write(
      "mails.txt",
      "My list\r\n!MailBot send x number\r\n1. One red\r\n2) blue\r\n(3) RED two\r\n[4] red\r\n"
      "12 Green\r\n007 Black\r\n20 White\r\n21 White\r\n30 White\r\n31 White\r\n");
  window.LoadList(window.Folder().File("mails.txt"));
  window.Type("txtListAOLSN", "JaneD");
  window.ClickCheckBox(0);
  window.ClickCheckBox(2);
  window.Choose("mnuSelectBetween");
  for (const int row : {4, 5, 7, 9}) window.ClickCheckBox(row);
  EXPECT_EQ(window.TitleHeader(), "Mail Title [7/10]");
  // A row checked in the middle of a run, and a second click, send the rest and nothing twice.
  QElapsedTimer clicked;
  clicked.start();
  window.Click("cmdRequest");
  ASSERT_EQ(meeting.Said(2).size(), 2U);
  window.ClickCheckBox(3);
  window.Click("cmdRequest");
  ASSERT_TRUE(window.Tells(kHint, "Requests sent: "));
  for (const char* mails : {"1-3", "12-007", "4", "21"}) {
    said.push_back(kTo + "!MailBot send JaneD " + mails);
  }
  ASSERT_EQ(meeting.Said(4), said);
  EXPECT_EQ(window.Checked(), "31");  // the last row alone
  EXPECT_GE(clicked.elapsed(), 400);
  // Lines that the server refuses, and those shortly before, are asked for anew.
  window.Choose("mnuSelectAll");
  window.ClickCheckBox(4);
  meeting.bot.Send("MODE #mailroom +m");
  ASSERT_TRUE(meeting.bot.WaitForLine("MODE #mailroom +m"));
  window.Click("cmdRequest");
  ASSERT_TRUE(window.Tells(kHint, "The room takes no requests (")) << window.Text(kHint);
  EXPECT_EQ(window.TitleHeader(), "Mail Title [9/10]");
  // Closing the window in the middle of a run ends it.
  meeting.bot.Send("MODE #mailroom -m");
  ASSERT_TRUE(meeting.bot.WaitForLine("MODE #mailroom -m"));
  window.Click("cmdRequest");
  window.App().Window().close();
  EXPECT_TRUE(meeting.bot.WaitForLine(" QUIT "));
  EXPECT_LE(meeting.bot.SaidBy("Wanda").size(), 6U);
}

TEST_F(RoomTest, WhatIsTypedPastedAnnouncedAndAskedByHand) {
  window.ShowTab(Tab::kRoom);
  for (const char* line : {"hello  room", "/msg MailBot psst  now"}) {
    window.Type("cmbSend", line);
    window.Press("cmbSend", Qt::Key_Return);
  }
  QApplication::clipboard()->setText("one\r\n\r\ntwo\n");
  QTest::keySequence(window.Find<QComboBox>("cmbSend").lineEdit(), QKeySequence::Paste);
  window.Click("cmdSend");
  said = {kTo + "hello  room", "MailBot :psst  now", kTo + "one", kTo + "two"};
  EXPECT_EQ(meeting.Said(4), said);
  EXPECT_TRUE(window.ShowsInRoom(
      "\n<Wanda> hello  room\nYou tell MailBot, 'psst  now'\n<Wanda> one\n<Wanda> two"));

  window.App().Settings().scanChatForServers = true;
  window.App().Settings().requestAccessCode = true;
  window.Type("txtInfoAOLSN", "Jane D");
  meeting.bot.Say(kRoom, "/notice \002MailBot\002 send list");
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
  window.Type("txtListAOLSN", "Jane D");
  window.Click("cmdManualRequest");
  window.Type("cmbRequestFrom", "Bot");
  window.Type("txtRequest", "12");
  window.Press("txtRequest", Qt::Key_Return);
  auto& form = window.Find<QWidget>("frmManualRequest");
  QTest::mouseClick(form.findChild<QAbstractButton*>("cmdRequest"), Qt::LeftButton);
  for (const char* text :
       {"!mailbot send Jane D accesscode", "!Bot verify Jane D 4711", "!Bot send Jane D list",
        "!Bot send Jane D status", "!Bot send Jane D accesscode", "!Bot send Jane D 12"}) {
    said.push_back(kTo + text);
  }
  EXPECT_EQ(meeting.Said(said.size()), said);

  auto& timer = window.Find<QTimer>("tmrAD");
  window.ShowTab(Tab::kInfo);
  window.Click("cmdIdle");
  EXPECT_EQ(window.Text("cmdIdle"), timer.isActive() && timer.interval() == 60000 ? "Back" : "");
  QMetaObject::invokeMethod(&timer, "timeout");
  const Texts all = meeting.Said(said.size() + 1);
  EXPECT_TRUE(all.back().starts_with(kTo + "\0035Check out \0039Brindle \0035for your"));
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
