// What the user says, and what the program says for the user, as a second user in the room receives
// it byte for byte, and what the room view shows of it. Real clicks, a real server.
#include <QApplication>
#include <QClipboard>
#include <QPointer>
#include <QTest>
#include <QTreeWidget>

#include "meeting.h"

namespace brindle::test {
namespace {

struct TalkTest : testing::Test, Meeting {
  void SetUp() override {
    ASSERT_TRUE(server.Start()) << server.Error().toStdString();
    ASSERT_NO_FATAL_FAILURE(Begin(server.Port()));
    TakeRoom();
  }
  // What the room view shows since the last call; `end` is the end of it.
  std::string TakeRoom(const std::string& end = "---") {
    const auto fresh = [&] { return window.Room().substr(seen); };
    EXPECT_TRUE(WaitUntil([&] { return fresh().ends_with(end); }, 5000)) << window.Room();
    const std::string all = window.Room();
    return all.substr(std::exchange(seen, all.size()));
  }
  IrcServer server{IrcServer::Kind::kNgircd};
  size_t seen = 0;
};

TEST_F(TalkTest, TypedAndPastedLines) {
  window.ShowTab(Tab::kRoom);
  for (const char* line : {"hello  room", "/msg MailBot psst  now", "/Tell MailBot"}) {
    window.Type("cmbSend", line);
    window.Press("cmbSend", Qt::Key_Return);
  }
  auto& box = window.Find<QComboBox>("cmbSend");
  QApplication::clipboard()->setText("one\r\n\r\ntwo\nthree\nfour\n");
  QTest::keySequence(box.lineEdit(), QKeySequence::Paste);
  window.Click("cmdSend");
  EXPECT_EQ(window.Boxes().questions.size(), 1U);
  window.Boxes().questionAnswers = {true};
  window.Click("cmdSend");
  EXPECT_EQ(window.Text("cmbSend"), "");
  EXPECT_EQ(Said(6), (Texts{"#mailroom :hello  room", "MailBot :psst  now", "#mailroom :one",
                            "#mailroom :two", "#mailroom :three", "#mailroom :four"}));
  const std::string shown = TakeRoom("four");
  EXPECT_EQ(Count(shown, "\nNot enough parameters for tell."), 1);
  EXPECT_EQ(Count(shown, "\nYou tell MailBot, 'psst  now'"), 1);
  EXPECT_TRUE(shown.ends_with("\n<Wanda> one\n<Wanda> two\n<Wanda> three\n<Wanda> four"));

  window.Type("cmbSend", "begun");
  for (int i = 0; i < 6; ++i) window.Press("cmbSend", Qt::Key_Up);
  EXPECT_EQ(window.Text("cmbSend"), "/msg MailBot psst  now");
  for (int i = 0; i < 6; ++i) window.Press("cmbSend", Qt::Key_Down);
  EXPECT_EQ(window.Text("cmbSend"), "begun");
}

TEST_F(TalkTest, AnAnnouncedServerIsAskedForACodeAndCommanded) {
  window.ShowTab(Tab::kOptions);
  window.App().Settings().scanChatForServers = true;
  window.Click("chkOptionsMisc_3");
  window.Type("txtInfoAOLSN", "Jane D");
  bot.Say(kRoom, "/notice \002MailBot\002 send list");
  const Texts asked = {"#mailroom :!mailbot send Jane D accesscode"};
  EXPECT_EQ(Said(1), asked);
  EXPECT_EQ(TakeRoom("accesscode"),
            "\n<MailBot> /notice MailBot send list"
            "\n::( ATTENTION ):: ADDED MAILBOT REQUESTING ACCESSCODE."
            "\n<Wanda> !mailbot send Jane D accesscode");
  EXPECT_EQ(window.Items("cmbServers"), "mailbot");
  bot.Say(kRoom, "again: !MailBot send 12");
  TakeRoom("send 12");

  window.ShowTab(Tab::kInfo);
  window.Type("cmbServers", "MailBot");
  window.Type("txtAccessCode", "4711");
  for (const char* item :
       {"mnuCommandsVerify", "mnuCommandsList", "mnuCommandsStatus", "mnuCommandsRequest"}) {
    window.Choose(item);
  }
  EXPECT_EQ(Said(5),
            (Texts{asked[0], "#mailroom :!MailBot verify Jane D 4711",
                   "#mailroom :!MailBot send Jane D list", "#mailroom :!MailBot send Jane D status",
                   "#mailroom :!MailBot send Jane D accesscode"}));
}

TEST_F(TalkTest, ManualRequestsAndTheAdvertisement) {
  window.ShowTab(Tab::kList);
  window.Type("txtListAOLSN", "Jane D");
  window.Click("cmdManualRequest");
  const QPointer<QWidget> form(&window.Find<QWidget>("frmManualRequest"));
  const auto click = [&](const char* button) {
    QTest::mouseClick(form->findChild<QAbstractButton*>(button), Qt::LeftButton);
  };
  const auto add = [&](const char* handle, const char* number) {
    window.Type("cmbRequestFrom", handle);
    window.Type("txtRequest", number);
    window.Press("txtRequest", Qt::Key_Return);
  };
  EXPECT_EQ(window.Text("txtManualAOLSN"), "Jane D");
  add("BotA", "12");
  add("BotB", "7");
  click("cmdRequest");
  const Texts both = {"#mailroom :!BotA send Jane D 12", "#mailroom :!BotB send Jane D 7"};
  EXPECT_EQ(Said(2), both);
  EXPECT_EQ(TakeRoom("D 7"), "\n<Wanda> !BotA send Jane D 12\n<Wanda> !BotB send Jane D 7");
  auto& rows = window.Find<QTreeWidget>("lstRequests");
  rows.topLevelItem(0)->setCheckState(0, Qt::Checked);
  window.Boxes().questionAnswers = {true};
  click("cmdRemove");
  ASSERT_EQ(rows.topLevelItemCount(), 1);
  EXPECT_EQ(rows.topLevelItem(0)->text(0) + rows.topLevelItem(0)->text(1), "BotB7");
  // Closing the window in the middle of a run ends it.
  for (const char* number : {"1", "2", "3", "4"}) add("BotA", number);
  click("cmdRequest");
  form->close();
  ASSERT_TRUE(WaitUntil([&] { return form.isNull(); }, 5000));
  EXPECT_EQ(TakeRoom("D 7"), "\n<Wanda> !BotB send Jane D 7");

  auto& timer = window.Find<QTimer>("tmrAD");
  EXPECT_EQ(timer.interval(), 60000);
  EXPECT_FALSE(timer.isActive());
  window.ShowTab(Tab::kInfo);
  window.Click("cmdIdle");
  EXPECT_TRUE(timer.isActive());
  EXPECT_EQ(window.Text("cmdIdle"), "Back");
  QMetaObject::invokeMethod(&timer, "timeout");
  const Texts said = Said(5);
  ASSERT_GE(said.size(), 5U);
  EXPECT_TRUE(said[3].starts_with("#mailroom :\0035Check out \0039Brindle \0035for your"))
      << said[3];
  EXPECT_TRUE(said[4].starts_with("#mailroom :\0035Here's what people are saying")) << said[4];
  EXPECT_EQ(window.Text("lblSentAd"), "Sent advertise 1 time(s)");
  window.Click("cmdIdle");
  EXPECT_FALSE(timer.isActive());
}

}  // namespace
}  // namespace brindle::test
