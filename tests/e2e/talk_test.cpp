// What the user says, and what the program says for the user, as a second user in the room receives
// it byte for byte, and what the room view shows of it. Real clicks, a real IRC server.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QTreeWidget>

#include "support/irc_server.h"
#include "support/raw_client.h"
#include "support/wait.h"
#include "support/window_driver.h"

namespace brindle::test {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* kRule =
    "{#c0c0c0}-----{#808080}----------{#c0c0c0}----------------------------------------"
    "{#808080}----------{#c0c0c0}-----";

// Wanda at the window and the bot, in one room.
class TalkTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(server_.Start()) << server_.Error().toStdString();
    bot.Begin(server_.Port());
    ASSERT_TRUE(window.Register("Wanda", server_.Port()));
    ASSERT_TRUE(bot.WaitForWelcome());
    ASSERT_TRUE(bot.Join("#mailroom"));
    ASSERT_TRUE(window.Join(0));
    ASSERT_EQ(window.Room(), TakeRoom());
  }

  // Types a line and presses Enter.
  void Say(const QString& line) {
    window.Type("cmbSend", line);
    Press(Qt::Key_Return);
  }
  void Press(Qt::Key key) { QTest::keyClick(window.Find<QComboBox>("cmbSend").lineEdit(), key); }
  std::string Typed() { return window.Find<QComboBox>("cmbSend").currentText().toStdString(); }

  // What Wanda has said so far, without who and where she is.
  Texts Said() const {
    Texts said;
    for (const RawClient::Line& line : bot.Lines()) {
      const size_t at = line.text.find(" PRIVMSG ");
      if (at != std::string::npos && line.text.starts_with(":Wanda!")) {
        said.push_back(line.text.substr(at + 9));
      }
    }
    return said;
  }
  bool HasSaid(size_t lines) {
    return WaitUntil([&] { return Said().size() >= lines; }, WindowDriver::kTimeoutMs);
  }

  // What the room view shows since the last call, once nothing is waiting to be shown.
  std::string TakeRoom() {
    WaitUntil([this] { return window.Text("lblBufferSizePeak").starts_with("0/"); },
              WindowDriver::kTimeoutMs);
    const std::string all = window.Room();
    const std::string fresh = all.substr(seen_);
    seen_ = all.size();
    return fresh;
  }

 private:
  IrcServer server_{IrcServer::Kind::kNgircd};
  size_t seen_ = 0;

 protected:
  WindowDriver window{{"#mailroom"}};
  RawClient bot{"MailBot"};
};

TEST_F(TalkTest, TypedLines) {
  window.ShowTab(Tab::kRoom);
  for (const char* line :
       {"hello  room", "/me waves", "/msg MailBot psst  now", "/Tell MailBot", "", "/join a b"}) {
    Say(line);
  }
  window.ShowTab(Tab::kStatus);
  Say("from status");
  window.ShowTab(Tab::kInfo);
  window.Type("cmbSend", "from info");
  window.Click("cmdSend");
  EXPECT_EQ(Typed(), "");
  ASSERT_TRUE(HasSaid(5));
  EXPECT_EQ(Said(), (Texts{"#mailroom :hello  room", "#mailroom :/me waves", "MailBot :psst  now",
                           "#mailroom :from status", "#mailroom :from info"}));
  ASSERT_TRUE(window.ShowsInRoom("from info"));
  EXPECT_EQ(TakeRoom(),
            "\n{#000000}<Wanda> hello  room"
            "\n{#000000}<Wanda> /me waves"
            "\n{#00ffff}You tell MailBot, {#c0c0c0}'{#00ffff}psst  now{#c0c0c0}'"
            "\n{#000080}Not enough parameters for tell."
            "\n{#000000}<Wanda> from info");
  const std::string status = window.Status();
  for (const char* shown : {"}You tell MailBot", "\n{#000080}Not enough parameters for tell.",
                            "\n{#000000}<Wanda> from status", "\n{#000000}<Wanda> from info",
                            "{#0000ff}Either not enough or too many parameters for room change."}) {
    EXPECT_NE(status.find(shown), std::string::npos) << shown;
  }
  EXPECT_EQ(status.find("hello"), std::string::npos);

  window.Type("cmbSend", "begun");
  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Up}) Press(key);
  EXPECT_EQ(Typed(), "/join a b");
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down}) Press(key);
  EXPECT_EQ(Typed(), "begun");

  ASSERT_TRUE(bot.Join("#other"));
  Say("/j other");
  ASSERT_TRUE(bot.WaitForLine("Wanda!"));
  ASSERT_TRUE(window.ShowsInRoom("* Now talking in #other"));
  Say("here");
  ASSERT_TRUE(HasSaid(6));
  EXPECT_EQ(Said().back(), "#other :here");
}

TEST_F(TalkTest, TheAdvertisement) {
  const std::string ad =
      "#mailroom :^C5Check out ^C9Brindle ^C5for your ^C9server helper ^C5needs! No need for IRC! "
      "Head over to ^C9^Bwww.brindle.example^B ^C5to check out screens, updates, and features. "
      "^C9v0.5.70 released ^C5jan. 05! ^C13^B[^C6AD : 10 minutes^C13]";
  auto& timer = window.Find<QTimer>("tmrAD");
  EXPECT_EQ(timer.interval(), 60000);
  EXPECT_FALSE(timer.isActive());
  EXPECT_EQ(window.Text("lblSentAd"), "Sent advertise 0 time(s)");
  window.ShowTab(Tab::kInfo);
  window.Click("cmdIdle");
  EXPECT_TRUE(timer.isActive());
  for (int minute = 1; minute <= 12; ++minute) QMetaObject::invokeMethod(&timer, "timeout");
  EXPECT_EQ(window.Text("lblSentAd"), "Sent advertise 2 time(s)");
  EXPECT_EQ(window.Find<QAbstractButton>("cmdIdle").text(), "Back");
  ASSERT_TRUE(HasSaid(4));
  for (size_t i = 0; i < 4; ++i) {
    const std::string said =
        QString::fromStdString(Said()[i]).replace("\003", "^C").replace("\002", "^B").toStdString();
    if (i % 2 == 0) {
      EXPECT_EQ(said, ad);
    } else {
      EXPECT_TRUE(
          said.starts_with("#mailroom :^C5Here's what people are saying about Brindle : \"^C9"));
      EXPECT_TRUE(said.ends_with(".^C5\" -Harrowgate") || said.ends_with("!^C5\" -Lumenfox"));
    }
  }
  ASSERT_TRUE(window.ShowsInRoom("\" -"));
  EXPECT_TRUE(TakeRoom().starts_with(
      "\n{#000000}<Wanda> {#800000}Check out {#00ff00}Brindle {#800000}for your {#00ff00}server "
      "helper {#800000}needs! No need for IRC! Head over to {#00ff00}www.brindle.example "
      "{#800000}to check out screens, updates, and features. {#00ff00}v0.5.70 released "
      "{#800000}jan. 05! {#ff00ff}[{#800080}AD : 10 minutes{#ff00ff}]"
      "\n{#000000}<Wanda> {#800000}Here's what people are saying about Brindle : \"{#00ff00}"));
  window.Click("cmdIdle");
  EXPECT_FALSE(timer.isActive());
}

TEST_F(TalkTest, AnAnnouncedServerIsAskedForACode) {
  window.ShowTab(Tab::kOptions);
  const auto& request = window.Find<QCheckBox>("chkOptionsMisc_3");
  EXPECT_TRUE(request.isEnabled());
  window.Click("chkOptionsMisc_2");
  EXPECT_FALSE(request.isEnabled());
  window.Click("chkOptionsMisc_3");
  EXPECT_FALSE(request.isChecked());
  window.Click("chkOptionsMisc_2");
  bot.Say("#mailroom", "Type !First send 1 to get mail");
  ASSERT_TRUE(window.ShowsInRoom("ADDED FIRST"));
  window.Click("chkOptionsMisc_3");
  window.Type("txtInfoAOLSN", "Jane D");
  bot.Say("#mailroom", "/notice \002MailBot\002 send list");
  ASSERT_TRUE(window.ShowsInRoom("<Wanda> !mailbot send"));
  bot.Say("#mailroom", "again: !mailbot send 12");
  bot.Say("#mailroom", "! send");
  bot.Say("#mailroom", "and !\001x send it");
  ASSERT_TRUE(HasSaid(2));
  EXPECT_EQ(Said(), (Texts{"#mailroom :!mailbot send Jane D accesscode",
                           "#mailroom :!\001x send Jane D accesscode"}));
  ASSERT_TRUE(window.ShowsInRoom("<Wanda> !x send"));
  const std::string added =
      "\n{#ff0000}:{#ff7d00}:{#ffff00}( {#0000ff}ATTENTION {#ffff00}){#ff7d00}:{#ff0000}: "
      "{#0000ff}ADDED {#ff7d00}";
  EXPECT_EQ(TakeRoom(),
            "\n{#000000}<MailBot> Type !First send 1 to get mail" + added +
                "FIRST Can't request code(either no screen name is entered or this options is off)."
                "\n{#000000}<MailBot> /notice MailBot send list" +
                added +
                "MAILBOT REQUESTING ACCESSCODE.\n{#000000}<Wanda> !mailbot send Jane D accesscode"
                "\n{#000000}<MailBot> again: !mailbot send 12\n{#000000}<MailBot> ! send"
                "\n{#000000}<MailBot> and !x send it" +
                added + "X REQUESTING ACCESSCODE.\n{#000000}<Wanda> !x send Jane D accesscode");
  EXPECT_EQ(window.Find<QComboBox>("cmbServers").count(), 3);
}

TEST_F(TalkTest, ManualRequests) {
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
    QTest::keyClick(&window.Find<QLineEdit>("txtRequest"), Qt::Key_Return);
    EXPECT_EQ(window.Find<QLineEdit>("txtRequest").text(), "");
  };
  EXPECT_EQ(window.Find<QLineEdit>("txtManualAOLSN").text(), "Jane D");
  add("BotA", "12");
  add("BotB", "7");
  click("cmdRequest");
  ASSERT_TRUE(HasSaid(2));
  const Texts both = {"#mailroom :!BotA send Jane D 12", "#mailroom :!BotB send Jane D 7"};
  EXPECT_EQ(Said(), both);
  ASSERT_TRUE(window.ShowsInRoom("<Wanda> !BotB"));
  EXPECT_EQ(TakeRoom(),
            "\n{#000000}<Wanda> !BotA send Jane D 12\n{#000000}<Wanda> !BotB send Jane D 7");
  auto& rows = window.Find<QTreeWidget>("lstRequests");
  rows.topLevelItem(0)->setCheckState(0, Qt::Checked);
  window.Boxes().questionAnswers = {true};
  click("cmdRemove");
  ASSERT_EQ(rows.topLevelItemCount(), 1);
  EXPECT_EQ(rows.topLevelItem(0)->text(0) + rows.topLevelItem(0)->text(1), "BotB7");

  // Closing the window in the middle of a run ends it.
  for (const char* number : {"1", "2", "3", "4", "5", "6", "8", "9"}) add("BotA", number);
  const Once closing([&] { return Said().size() > 2; }, [&] { form->close(); });
  click("cmdRequest");
  ASSERT_TRUE(closing.HasRun());
  ASSERT_TRUE(WaitUntil([&] { return form.isNull(); }, WindowDriver::kTimeoutMs));
  Say("the end");
  ASSERT_TRUE(bot.WaitForLine(":the end"));
  EXPECT_LT(Said().size(), 2U + 9U + 1U);
  window.Click("cmdManualRequest");
  EXPECT_TRUE(window.Find<QWidget>("frmManualRequest").isVisible());
}

TEST_F(TalkTest, WhatASearchFindsIsRequested) {
  QFile file(window.Folder().File("list.txt"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("!MailBot send x y\r\n1. One red\r\n2. blue\r\n3. RED two\r\n4. red\r\n5. green\r\n");
  file.close();
  window.ShowTab(Tab::kList);
  window.Click("cmdFind");
  EXPECT_EQ(window.Boxes().notices.size(), 1U);  // an empty list
  window.LoadList(file.fileName());
  window.Type("txtListAOLSN", "JaneD");
  window.Click("cmdFind");
  const QPointer<QWidget> form(&window.Find<QWidget>("frmResults"));
  const auto click = [&](const char* button) {
    QTest::mouseClick(form->findChild<QAbstractButton*>(button), Qt::LeftButton);
  };
  for (const char* text : {"blue", "R ed", "Red"}) {
    window.Type("cmbSearch", text);
    QTest::keyClick(window.Find<QComboBox>("cmbSearch").lineEdit(), Qt::Key_Return);
  }
  EXPECT_EQ(window.Text("lblSearchedThrough") + " " + window.Text("lblSearchMatches"), "5 3");
  EXPECT_EQ(window.Find<QComboBox>("cmbSearch").currentText(), "Red");
  EXPECT_EQ(window.Find<QComboBox>("cmbSearch").count(), 2);
  const QAbstractItemModel& found = *form->findChild<QTableView*>("lstResults")->model();
  const auto header = [&] { return found.headerData(1, Qt::Horizontal).toString(); };
  EXPECT_EQ(header(), "Mail Title [0/3]");

  click("cmdSelect");
  window.Choose("mnuSelectAll");
  window.Find<QMenu>("mnuSelect").close();
  EXPECT_EQ(header(), "Mail Title [3/3]");
  window.Boxes().questionAnswers = {false};
  click("cmdReturn");
  EXPECT_TRUE(form->isVisible());
  click("cmdSelected");
  EXPECT_EQ(window.Boxes().notices.back().text, "Selected 3 items.");
  EXPECT_EQ(window.Checked(), "1 3 4");
  EXPECT_EQ(window.TitleHeader(), "Mail Title [3/5]");
  form->close();
  ASSERT_TRUE(WaitUntil([&] { return form.isNull(); }, WindowDriver::kTimeoutMs));
  EXPECT_EQ(window.Boxes().questions.size(), 1U);
  EXPECT_NE(window.Folder().Content("finds.txt").find("item1=Red\r\n"), std::string::npos);
  EXPECT_NE(window.Folder().Content("brindle.ini").find("last=Red\r\n"), std::string::npos);

  window.Click("cmdRequest");
  ASSERT_TRUE(HasSaid(2));
  EXPECT_EQ(Said(),
            (Texts{"#mailroom :!MailBot send JaneD 1", "#mailroom :!MailBot send JaneD 3-4"}));
  window.Click("cmdFind");
  EXPECT_EQ(window.Find<QComboBox>("cmbSearch").currentText(), "Red");
  EXPECT_EQ(window.Find<QComboBox>("cmbSearch").count(), 2);
}

}  // namespace
}  // namespace brindle::test
