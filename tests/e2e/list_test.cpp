// The list tab in the real window: its filter, what it says of bad files, and the ways in.
#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include "support/wait.h"
#include "support/window_driver.h"

#include <gtest/gtest.h>

namespace brindle::test {
namespace {

class ListTab : public testing::Test {
 protected:
  ListTab() {
    window_.Folder().Write("mails.txt", "!MailBot send x y\n1 a\n2 b\n3 ab\n4 c\n");
    window_.Folder().Write("bad.txt", "");
    window_.LoadList(File("mails.txt"));
  }
  QString File(const char* name) const { return window_.Folder().File(name); }
  bool IsOnList() {
    return window_.App().Window().focusWidget() == &window_.Find<QWidget>("lstServerList");
  }

  WindowDriver window_;
};

TEST_F(ListTab, FiltersAndCountsEverything) {
  EXPECT_TRUE(IsOnList());
  window_.ClickCheckBox(3);
  window_.Type("txtListFilter", "B");
  EXPECT_EQ(window_.Items("lstServerList"), "2 3");
  EXPECT_EQ(window_.Text("lblRun"), "1 of 4 checked, 2 shown");
  window_.Find<QAction>("mnuSelectNone").trigger();
  EXPECT_EQ(window_.Text("lblRun"), "0 of 4 checked, 2 shown");
  window_.Press("txtListFilter", Qt::Key_Escape);
  EXPECT_EQ(window_.Items("lstServerList") + window_.Text("txtListFilter"), "1 2 3 4");
  EXPECT_TRUE(IsOnList());
  window_.Type("txtListFilter", "b");
  window_.LoadList(File("mails.txt"));
  EXPECT_EQ(window_.Items("lstServerList") + window_.Text("txtListFilter"), "1 2 3 4");
}

TEST_F(ListTab, SaysWhatWasWrongAndUndoesIt) {
  window_.ClickCheckBox(1);
  for (const char* way : {"file", "web"}) {
    way == std::string("web") ? window_.Choose("mnuLoadListWeb")
                              : window_.LoadList(File("bad.txt"));
    EXPECT_EQ(window_.Items("lstServerList"), "");
    EXPECT_FALSE(window_.Text("lblListNote").empty());
    EXPECT_EQ(window_.Text("barStatusPanel2"), window_.Text("lblListNote"));
    window_.Click("cmdListUndo");
    EXPECT_EQ(window_.Checked() + window_.TitleHeader(), "2Mail Title [1/4]");
    EXPECT_TRUE(window_.Find<QWidget>("barListNote").isHidden());
  }
}

TEST_F(ListTab, TakesListsFromTheMenuAndFromADrop) {
  window_.Choose("mnuLoadListWeb");
  window_.Click("cmdLoadList");
  window_.Find<QMenu>("mnuLoadList").close();
  window_.Choose("mnuLoadListRecent_0");
  EXPECT_EQ(window_.Items("lstServerList"), "1 2 3 4");
  window_.Folder().Write("other.txt", "7 x\n");
  window_.ShowTab(Tab::kStatus);
  QMimeData dragged;
  dragged.setUrls({QUrl::fromLocalFile(File("other.txt"))});
  QDragEnterEvent enter({50, 50}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window_.App().Window(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop({50, 50}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window_.App().Window(), &drop);
  EXPECT_TRUE(WaitUntil([&] { return window_.Items("lstServerList") == "7"; }, 5000));
}

TEST_F(ListTab, HasAMenuForItsRows) {
  auto& table = window_.Find<QTableView>("lstServerList");
  QTest::keyClick(&table, Qt::Key_Down);
  QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
  const QPoint place(5, 5);
  QContextMenuEvent event(QContextMenuEvent::Keyboard, place, table.mapToGlobal(place));
  QApplication::sendEvent(table.viewport(), &event);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  window_.Choose("mnuRowsCheck");
  EXPECT_EQ(window_.Checked(), "2 3");
  window_.Choose("mnuRowsUncheck");
  EXPECT_EQ(window_.Checked(), "");
  QApplication::activePopupWidget()->close();
}

}  // namespace
}  // namespace brindle::test
