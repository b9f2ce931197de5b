// What the window shows of a session wherever the user is, and what its keys and menus do.
#include <QApplication>
#include <QClipboard>
#include <QListView>
#include <QMenu>
#include <QTabWidget>
#include <QTest>

#include "meeting.h"

namespace brindle::test {
namespace {

struct FrameTest : testing::Test {
  void SetUp() override {
    session.server.Send(
        ":me!u@h JOIN #mailroom\r\n:s 332 me #mailroom :\0034Be \002kind\r\n"
        ":s 353 me = #mailroom :@Mailo me +bob\r\n:s 366 me #mailroom :End\r\n");
    ASSERT_TRUE(window.ShowsInRoom("-----"));
  }
  // Keys go to whatever has the focus, as on a real desktop.
  void Press(const QKeySequence& keys) {
    QWidget* focus = window.App().Window().focusWidget();
    QTest::keyClick(focus, keys[0].key(), keys[0].keyboardModifiers());
  }
  void Type(const char* text) { QTest::keyClicks(window.App().Window().focusWidget(), text); }
  std::string Focus() { return window.App().Window().focusWidget()->objectName().toStdString(); }
  bool HasDot(Tab tab) {
    return !window.Find<QTabWidget>("tabMain").tabIcon(static_cast<int>(tab)).isNull();
  }
  // A click with the left button, or two, on a row of a list.
  void ClickRow(const char* name, int row, bool twice) {
    auto& list = window.Find<QListView>(name);
    const QPoint at = list.visualRect(list.model()->index(row, 0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
    if (twice) QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, at);
  }

  ScriptedSession session;
  WindowDriver& window = session.window;
};

TEST_F(FrameTest, ShowsRoomTopicAndWhatIsUnseen) {
  EXPECT_EQ(window.Text("lblRoom") + ": " + window.Text("lblTopic"), "#mailroom: Be kind");
  EXPECT_EQ(window.Text("barStatusRoom"), "#mailroom");
  EXPECT_TRUE(HasDot(Tab::kStatus));
  EXPECT_FALSE(HasDot(Tab::kRoom));
  window.ShowTab(Tab::kList);
  session.server.Send(":bob!u@h PRIVMSG #mailroom :hi\r\n");
  EXPECT_TRUE(window.ShowsInRoom("hi") && HasDot(Tab::kRoom));
  window.ShowTab(Tab::kRoom);
  EXPECT_FALSE(HasDot(Tab::kRoom));
  session.server.Send(":me!u@h PART #mailroom\r\n");
  EXPECT_TRUE(window.Tells("lblRoom", "No room"));
  EXPECT_EQ(window.Text("barStatusRoom"), "");
}

TEST_F(FrameTest, TypingGoesToTheLineAndTabCompletes) {
  EXPECT_EQ(Focus(), "cmbSend");
  Type("ma");
  Press(Qt::Key_Tab);
  Type(" ");
  EXPECT_EQ(window.Text("cmbSend"), "Mailo:  ");
  window.Find<ChatTextView>("txtChannel").setFocus();
  Type("x");
  EXPECT_EQ(Focus() + window.Text("cmbSend"), "cmbSendMailo:  x");
  window.Type("cmbSend", "");
  Press(Qt::Key_Tab);
  EXPECT_NE(Focus(), "cmbSend");
  ClickRow("lstWho", 0, true);
  EXPECT_EQ(Focus() + window.Text("cmbSend"), "cmbSend/msg Mailo ");
}

TEST_F(FrameTest, KeysWalkThroughPanesAndTabs) {
  std::string walked;
  for (int i = 0; i < 4; ++i) {
    Press(Qt::Key_F6);
    walked += Focus() + " ";
  }
  EXPECT_EQ(walked, "txtChannel lstChannels lstWho cmbSend ");
  Press(QKeySequence("Ctrl+F"));
  EXPECT_TRUE(window.Find<QWidget>("txtChannel").isAncestorOf(window.App().Window().focusWidget()));
  Press(Qt::Key_Escape);
  Press(Qt::Key_Escape);
  Press(QKeySequence("Alt+5"));
  EXPECT_EQ(window.Find<QTabWidget>("tabMain").currentIndex(), static_cast<int>(Tab::kConnection));
}

TEST_F(FrameTest, ListsAnswerKeysAndMenus) {
  auto& rooms = window.Find<QListView>("lstChannels");
  rooms.setFocus();
  window.Boxes().inputAnswers.push_back("other");
  Press(Qt::Key_Insert);
  EXPECT_EQ(window.Items("lstChannels"), "#mailroom #other");
  ClickRow("lstChannels", 1, false);
  rooms.setFocus();
  Press(Qt::Key_Delete);
  EXPECT_EQ(window.Items("lstChannels"), "#mailroom");
  ClickRow("lstWho", 2, false);
  emit window.Find<QListView>("lstWho").customContextMenuRequested({});
  window.Choose("mnuWhoServer");
  EXPECT_EQ(window.Text("txtListServer") + window.Text("cmbServers"), "bobbob");
  window.Choose("mnuWhoCopy");
  EXPECT_EQ(QApplication::clipboard()->text(), "bob");
}

}  // namespace
}  // namespace brindle::test
