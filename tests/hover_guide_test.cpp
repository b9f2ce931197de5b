// Hover help and the help page with real widgets.

#include "ui/hover_guide.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QtTest>

#include "ui/help_page.h"

namespace brindle::test {
namespace {

class HoverGuideTest : public testing::Test {
 protected:
  HoverGuideTest() {
    window.setObjectName("frmMain");
    auto* central = new QWidget;
    window.setCentralWidget(central);
    auto* outer = new QVBoxLayout(central);
    outer->setContentsMargins(30, 30, 30, 30);
    auto* group = Add<QGroupBox>("fmeServer", outer);
    auto* inner = new QVBoxLayout(group);
    inner->setContentsMargins(20, 20, 20, 20);
    Add<QPushButton>("cmdConnect", inner)->setText("&Connect");
    Add<QPushButton>("cmdFind", inner);
    Add<QPushButton>("cmdSend", inner);
    Add<QLabel>("lblListForecolor", inner)->setText("Forecolor");
    Add<QLineEdit>("txtAccessCode", inner);
    Add<QCheckBox>("chkOptionsFind_1", inner)->setText("Remove old finds");
    Add<QTableWidget>("lstServerList", inner);
    window.resize(400, 500);
    window.show();
    (void)QTest::qWaitForWindowExposed(&window);
  }

  template <typename Widget>
  Widget* Add(const char* name, QVBoxLayout* layout) {
    auto* widget = new Widget;
    widget->setObjectName(name);
    layout->addWidget(widget);
    return widget;
  }

  QWidget* Find(const char* name) { return window.findChild<QWidget*>(name); }

  // Moves the mouse to a place of the window.
  void MoveTo(QPoint place) {
    QTest::mouseMove(window.windowHandle(), place);
    QCoreApplication::processEvents();
  }

  void MoveOver(const char* name) {
    QWidget* const widget = Find(name);
    MoveTo(widget->mapTo(&window, widget->rect().center()));
  }

  QMainWindow window;
  std::string hint = "start";
  std::string help = "start";
  HoverGuide* guide = new HoverGuide(
      window, [this](const std::string& text) { hint = text; },
      [this](const std::string& text) { help = text; });
};

TEST_F(HoverGuideTest, TheMouse) {
  const std::string find = "Search for a specific item in the list and display the results.";
  MoveOver("cmdFind");
  EXPECT_EQ(hint, find);
  // A control without a hint leaves the last one; the form behind clears it.
  MoveOver("cmdSend");
  EXPECT_EQ(hint, find);
  MoveTo({2, 2});
  EXPECT_EQ(hint, "");
  MoveOver("cmdConnect");
  EXPECT_EQ(hint, "Connect to the selected IRC server.");
  static_cast<QPushButton*>(Find("cmdConnect"))->setText("Disconnect");
  QWidget* const connect = Find("cmdConnect");
  MoveTo(connect->mapTo(&window, connect->rect().center() + QPoint(3, 0)));
  EXPECT_EQ(hint, "Disconnect from the current IRC server.");
  // From a button straight to the frame that holds it.
  MoveTo(Find("fmeServer")->mapTo(&window, QPoint(8, 100)));
  EXPECT_EQ(hint, "");
  MoveOver("lstServerList");
  EXPECT_EQ(
      hint,
      "Selecting list items made easier by shift+left clicking or using the 'Select' button.");
  EXPECT_EQ(help, "start");
  MoveOver("lblListForecolor");
  EXPECT_EQ(help, "List / Forecolor\r\n\r\nDetermines the forecolor of the list window.");
  MoveOver("chkOptionsFind_1");
  const std::string days =
      "Finds / Remove old finds X days\r\n\r\nIf this is checked and an item hasn't been searched "
      "for in X amount of days it will be removed.";
  EXPECT_EQ(help, days);
  MoveTo({2, 2});
  EXPECT_EQ(help, days);
}

TEST_F(HoverGuideTest, TheKeyboard) {
  window.activateWindow();
  (void)QTest::qWaitForWindowActive(&window);
  Find("txtAccessCode")->setFocus();
  EXPECT_EQ(
      hint,
      "This is used when selecting 'Verify Accesscode' menu item from the 'Commands' button.");
  QTest::keyClick(Find("txtAccessCode"), Qt::Key_Tab);
  EXPECT_EQ(help.substr(0, 31), "Finds / Remove old finds X days");
}

TEST_F(HoverGuideTest, AWidgetThatJoinsTheWindowLater) {
  auto* late = new QPushButton(Find("fmeServer"));
  late->setObjectName("cmdSelect");
  late->setGeometry(0, 0, 15, 15);
  late->show();
  MoveOver("cmdSelect");
  EXPECT_EQ(hint, "Click for several easy ways to make selecting quicker.");
}

TEST_F(HoverGuideTest, AnotherWindowIsNotWatched) {
  QWidget dialog(&window, Qt::Dialog);
  dialog.setObjectName("frmUpdater");
  auto* inside = new QPushButton(&dialog);
  inside->setObjectName("cmdLoadList");
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  QTest::mouseMove(dialog.windowHandle(), {5, 5});
  QCoreApplication::processEvents();
  EXPECT_TRUE(inside->underMouse());
  EXPECT_NE(hint, "Load a servers list to make requesting mails easier.");
}

TEST(HelpPageTest, TheWayToAMailAndNoOtherWayOut) {
  HelpPage page;
  std::vector<QUrl> opened;
  page.SetOpener([&](const QUrl& address) { opened.push_back(address); });
  page.resize(500, 200);
  page.show();
  EXPECT_EQ(page.objectName(), "webHelp");
  for (const char* word : {"Request Selected", "Load Server List", "(12) Some title", "/join room",
                           "Send mesagess to status window"}) {
    EXPECT_TRUE(page.toPlainText().contains(word)) << word;
  }
  for (const char* link : {"https://elsewhere.example", "file:///etc/fstab", "#options"}) {
    emit page.anchorClicked(QUrl(link));
  }
  EXPECT_TRUE(opened.empty());
  EXPECT_TRUE(page.toPlainText().contains("Request Selected"));
  page.SetWebAddress("file:///etc/fstab");
  emit page.anchorClicked(QUrl("web"));
  EXPECT_TRUE(opened.empty());
  page.SetWebAddress("https://self.hosted.example");
  emit page.anchorClicked(QUrl("web"));
  EXPECT_EQ(opened, std::vector<QUrl>{QUrl("https://self.hosted.example")});
}

}  // namespace
}  // namespace brindle::test
