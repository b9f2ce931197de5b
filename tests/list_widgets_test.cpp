// The widgets that show the program's lists: the combo box that leaves typed text alone, the table
// of mails, and the search window with the Select menu.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QGroupBox>
#include <QLineEdit>
#include <QListView>
#include <QWheelEvent>
#include <QtTest/QTest>
#include <functional>
#include <string>

#include "support/mail_stage.h"
#include "support/memory_files.h"
#include "support/wait.h"
#include "ui/frm_results.h"
#include "ui/list_combo_box.h"
#include "ui/mail_table.h"
#include "ui/pop_up.h"

namespace brindle {
namespace {

using Texts = ObservedList<std::string>;

TEST(ListComboBoxTest, ChangesOfTheListLeaveTheTextAlone) {
  constexpr std::optional<size_t> kNone;
  const auto add = [](Texts& list) { list.Add("b"); };
  const auto removeFirst = [](Texts& list) { list.RemoveAt(0); };
  const auto removeSecond = [](Texts& list) { list.RemoveAt(1); };
  const auto clear = [](Texts& list) { list.Clear(); };
  const struct {
    std::vector<std::string> items;
    std::optional<size_t> selected;
    const char* typed;  // null: what the selected item says
    std::function<void(Texts&)> change;
    const char* text;
    std::optional<size_t> selectedAfter;
  } table[] = {
      {{}, kNone, "ty", add, "ty", kNone},
      {{}, kNone, "", add, "", kNone},
      {{"a"}, kNone, "ty", add, "ty", kNone},
      {{"a"}, 0, nullptr, add, "a", 0},
      {{"a"}, 0, "ab", add, "ab", kNone},
      {{"a", "b"}, 1, nullptr, removeFirst, "b", 0},
      {{"a", "b"}, 0, nullptr, removeSecond, "a", 0},
      {{"a", "b"}, 0, nullptr, removeFirst, "", kNone},
      {{"a", "b"}, 0, "ab", removeFirst, "ab", kNone},
      {{"a"}, kNone, "ty", removeFirst, "ty", kNone},
      {{"a", "b"}, kNone, "ty", clear, "ty", kNone},
      {{"a"}, 0, nullptr, clear, "", kNone},
      {{"a", "a"}, 1, nullptr, removeFirst, "a", 0},
  };
  for (const auto& row : table) {
    const auto which = &row - table;
    Texts list;
    ListComboBox box;
    box.Attach(list);
    for (const std::string& item : row.items) list.Add(item);
    box.Select(row.selected);
    if (row.typed != nullptr) {
      box.lineEdit()->selectAll();
      QTest::keyClick(box.lineEdit(), Qt::Key_Delete);
      QTest::keyClicks(box.lineEdit(), row.typed);
      QTest::keyClick(box.lineEdit(), Qt::Key_Left);
    }
    const int cursor = box.lineEdit()->cursorPosition();
    EXPECT_EQ(box.Selected(), row.typed != nullptr ? kNone : row.selected) << which;
    row.change(list);
    EXPECT_EQ(box.currentText().toStdString(), row.text) << which;
    EXPECT_EQ(box.Selected(), row.selectedAfter) << which;
    EXPECT_TRUE(row.typed == nullptr || box.lineEdit()->cursorPosition() == cursor) << which;
    EXPECT_EQ(box.count(), static_cast<int>(list.Size())) << which;
  }
}

TEST(ListComboBoxTest, OnlyTypingAndPickingChangeTheText) {
  Texts list;
  ListComboBox box;
  box.Attach(list);
  for (const char* item : {"MailBot", "mailer"}) list.Add(item);
  int picked = 0;
  QObject::connect(&box, &ListComboBox::Picked, &box, [&picked] { ++picked; });
  QTest::keyClicks(box.lineEdit(), "mail");
  for (const auto key : {Qt::Key_Return, Qt::Key_PageUp, Qt::Key_PageDown}) {
    QTest::keyClick(box.lineEdit(), key);
  }
  QWheelEvent wheel({}, {}, {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&box, &wheel);
  EXPECT_FALSE(wheel.isAccepted());
  EXPECT_EQ(box.currentText(), "mail");
  EXPECT_EQ(box.count(), 2);
  EXPECT_EQ(picked, 0);
  box.Select(0);
  box.Select(std::nullopt);
  EXPECT_EQ(box.currentText(), "");
  EXPECT_EQ(picked, 2);
  // Nothing gets in that one line of text cannot have.
  const QString broken = QString("a\r\nb") + QChar::Null + "\tc\u0085";
  box.setEditText(broken);
  EXPECT_EQ(box.currentText(), "abc");
  box.lineEdit()->setCursorPosition(1);
  box.lineEdit()->insert(broken);
  EXPECT_EQ(box.currentText(), "aabcbc");
  EXPECT_EQ(box.lineEdit()->cursorPosition(), 4);
}

TEST(ListViewTest, NothingIsSelectedOnceTheSelectedRowIsGone) {
  Texts list;
  ObservedListModel model(list);
  QListView view;
  ShowIn(view, model);
  for (const char* item : {"a", "b", "c"}) list.Add(item);
  view.setCurrentIndex(model.index(1));
  list.RemoveAt(0);
  EXPECT_EQ(view.currentIndex().data(), "b");
  list.RemoveAt(0);
  EXPECT_FALSE(view.currentIndex().isValid() || view.selectionModel()->hasSelection());
}

class MailTableTest : public testing::Test {
 protected:
  MailTableTest() {
    Fill(list_, "1=a|2=a|3=a|4=a|5=a|6=a");
    table_.Attach(list_);
    table_.setSelectionBehavior(QAbstractItemView::SelectRows);
    table_.setSelectionMode(QAbstractItemView::ExtendedSelection);
    table_.resize(400, 300);
    table_.show();
  }

  void Click(int row, Qt::KeyboardModifiers held = {}) {
    const QPoint title = table_.visualRect(table_.model()->index(row, 1)).center();
    QTest::mouseClick(table_.viewport(), Qt::LeftButton, held, title);
  }
  // The checks, after a key or a click.
  std::string Space() {
    QTest::keyClick(&table_, Qt::Key_Space);
    return ChecksOf(list_);
  }

  MailList list_;
  MailTable table_;
};

TEST_F(MailTableTest, SpaceTogglesTheHighlightedRows) {
  std::string header;
  QObject::connect(table_.model(), &QAbstractItemModel::headerDataChanged, &table_, [&] {
    header = table_.model()->headerData(1, Qt::Horizontal).toString().toStdString();
  });
  EXPECT_EQ(Space(), "......");
  Click(4);
  EXPECT_EQ(ChecksOf(list_), "......");  // on the title; only the box checks
  EXPECT_EQ(Space(), "....x.");
  EXPECT_EQ(header, "Mail Title [1/6]");
  // All become the opposite of the row that was clicked last.
  Click(3);
  Click(5, Qt::ShiftModifier);
  Click(0, Qt::ControlModifier);
  const std::vector<RowRange> highlighted = table_.HighlightedRows();
  ASSERT_EQ(highlighted.size(), 2U);
  EXPECT_EQ(highlighted[0].first + 10 * highlighted[0].last, 0U);
  EXPECT_EQ(highlighted[1].first + 10 * highlighted[1].last, 53U);
  EXPECT_EQ(Space(), "x..xxx");
  EXPECT_EQ(header, "Mail Title [4/6]");
  EXPECT_EQ(Space(), "......");
}

TEST_F(MailTableTest, ShiftAndClickHighlightBeforeTheyAreTold) {
  size_t highlighted = 0;
  Qt::KeyboardModifiers modifiers;
  QObject::connect(&table_, &MailTable::MouseUp, &table_, [&](Qt::KeyboardModifiers held) {
    highlighted = table_.HighlightedRows().size();
    modifiers = held;
  });
  Click(1);
  Click(3, Qt::ControlModifier);
  EXPECT_EQ(highlighted, 2U);
  Click(5, Qt::ShiftModifier);
  EXPECT_EQ(table_.HighlightedRows().back().last, 5U);
  EXPECT_EQ(modifiers, Qt::ShiftModifier);
}

TEST(SearchWindow, ComesAndGoes) {
  MailStage stage;
  MemoryFiles files;
  Options options;
  SettingsFile settings(files, "ini");
  const std::string path = "finds";
  Finds finds(files, path, options, stage);
  MailList main;
  Fill(main, "1=a|2=a|3=b");
  Results results(main, finds, settings, stage, stage, stage);
  ListSelection selection(stage);
  QWidget owner;
  SelectMenu menu(&owner);
  menu.Attach(selection, main);
  const auto choose = [&menu](const char* item) {
    menu.close();
    menu.findChild<QAction*>(item)->trigger();
  };
  auto* window = new FrmResults(results, menu, &owner);
  const auto click = [&](const char* button) {
    QTest::mouseClick(window->findChild<QAbstractButton*>(button), Qt::LeftButton);
  };
  BringUp(*window);
  QTest::keyClicks(window->findChild<ListComboBox*>("cmbSearch")->lineEdit(), "a\r");
  EXPECT_EQ(window->findChild<QGroupBox*>("fmeSearch")->title(), "Search Completed");
  click("cmdSelect");
  choose("mnuSelectAll");
  EXPECT_EQ(results.Found().TitleHeader() + ChecksOf(main), "Mail Title [2/2]...");
  menu.PopUpForMain(owner);
  choose("mnuSelectNone");
  EXPECT_EQ(results.Found().CheckedCount(), 2U);
  click("cmdSelect");
  click("cmdSelected");
  EXPECT_EQ(ChecksOf(main), "xx.");

  // Neither a minimised nor a maximised window is stored at that size.
  window->resize(500, 400);
  window->showMaximized();
  ASSERT_TRUE(test::WaitUntil([&] { return window->width() > 500; }, 5000));
  EXPECT_EQ(window->Geometry().width, 500 * 15);
  window->showMinimized();
  BringUp(*window);
  EXPECT_FALSE(window->isMinimized());
  click("cmdReturn");
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(settings.ReadSetting("results", "height"), "6000");
  // The menu still offers "All", but the window for which it did is gone.
  choose("mnuSelectAll");
  choose("mnuSelectNone");
  EXPECT_EQ(ChecksOf(main), "xx.");
}

}  // namespace
}  // namespace brindle
