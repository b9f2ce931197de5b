// The widgets that show the program's lists: the combo box that leaves typed text alone, and the
// table of mails.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QWheelEvent>
#include <QtTest/QTest>

#include "support/mail_stage.h"
#include "support/wait.h"
#include "ui/list_combo_box.h"
#include "ui/mail_list_model.h"
#include "ui/mail_table.h"

namespace brindle {
namespace {

using Texts = ObservedList<std::string>;

TEST(ListComboBoxTest, ChangesOfTheListLeaveTheTextAlone) {
  using Row = std::optional<size_t>;
  constexpr Row kNone;
  // Items, a letter each, and the selected one; what is typed over it, or null; a change, where "+"
  // adds "b", a digit removes that item and "c" clears; then text and selected item.
  const std::tuple<const char*, Row, const char*, char, const char*, Row> table[] = {
      {"", kNone, "ty", '+', "ty", kNone},   {"", kNone, "", '+', "", kNone},
      {"a", 0, nullptr, '+', "a", 0},        {"a", 0, "ab", '+', "ab", kNone},
      {"ab", 1, nullptr, '0', "b", 0},       {"ab", 0, nullptr, '1', "a", 0},
      {"ab", 0, nullptr, '0', "", kNone},    {"ab", 0, "ab", '0', "ab", kNone},
      {"ab", kNone, "ty", 'c', "ty", kNone}, {"a", 0, nullptr, 'c', "", kNone},
      {"aa", 1, nullptr, '0', "a", 0},
  };
  for (const auto& [items, selected, typed, change, text, selectedAfter] : table) {
    SCOPED_TRACE(std::string(items) + " " + change + " " + text);
    Texts list;
    ListComboBox box;
    box.Attach(list);
    for (const char item : std::string_view(items)) list.Add({item});
    box.Select(selected);
    if (typed != nullptr) {
      box.lineEdit()->clear();
      QTest::keyClicks(box.lineEdit(), typed);
      QTest::keyClick(box.lineEdit(), Qt::Key_Left);
    }
    const int cursor = box.lineEdit()->cursorPosition();
    EXPECT_EQ(box.Selected(), typed != nullptr ? kNone : selected);
    if (change == '+') list.Add("b");
    if (change == 'c') list.Clear();
    if (change == '0' || change == '1') list.RemoveAt(change == '1' ? 1 : 0);
    EXPECT_EQ(box.currentText(), text);
    EXPECT_EQ(box.Selected(), selectedAfter);
    EXPECT_TRUE(typed == nullptr || box.lineEdit()->cursorPosition() == cursor);
    EXPECT_EQ(box.count(), static_cast<int>(list.Size()));
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
  for (const auto key : {Qt::Key_Return, Qt::Key_PageUp, Qt::Key_PageDown})
    QTest::keyClick(box.lineEdit(), key);
  QWheelEvent wheel({}, {}, {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&box, &wheel);
  EXPECT_FALSE(wheel.isAccepted());
  EXPECT_EQ(box.currentText() + QString::number(box.count()) + QString::number(picked), "mail20");
  box.Select(0);
  EXPECT_EQ(picked, 1);
  // Nothing gets in that one line of text cannot have.
  box.setEditText("xy");
  box.lineEdit()->setCursorPosition(1);
  box.lineEdit()->insert(QString("a\r\nb") + QChar::Null + "\tc\u0085");
  EXPECT_EQ(box.currentText() + QString::number(box.lineEdit()->cursorPosition()), "xabcy4");
}

struct MailTableTest : testing::Test {
  MailTableTest() {
    Fill(list_, "1=Apple|2=Berry|3=Cherry|4=Apple pie|5=Bread|6=4 berries");
    table_.Attach(list_);
    table_.setSelectionBehavior(QAbstractItemView::SelectRows);
    table_.setSelectionMode(QAbstractItemView::ExtendedSelection);
    table_.resize(400, 300);
    table_.show();
  }

  // On a title, or on the check box before it.
  void Click(int row, Qt::KeyboardModifiers held = {}) {
    QTest::mouseClick(table_.viewport(), Qt::LeftButton, held, Place(row, 1).center());
  }
  std::string ClickBox(int row, Qt::KeyboardModifiers held = {}) {
    const QPoint box = Place(row, 0).topLeft() + QPoint(8, 13);
    QTest::mouseClick(table_.viewport(), Qt::LeftButton, held, box);
    return ChecksOf(list_) + Highlighted();
  }
  QRect Place(int row, int column) const {
    return table_.visualRect(table_.model()->index(row, column));
  }
  // The checks, after a key.
  std::string Press(Qt::Key key, Qt::KeyboardModifiers held = {}) {
    QTest::keyClick(&table_, key, held);
    return ChecksOf(list_);
  }
  // The title of the current row.
  std::string Current() const {
    return table_.currentIndex().siblingAtColumn(1).data().toString().toStdString();
  }
  // The highlighted rows, as "0-2 4".
  std::string Highlighted() const {
    std::string text;
    for (const auto& [first, last] : table_.HighlightedRows()) {
      text += (text.empty() ? "" : " ") + std::to_string(first);
      if (last > first) text += "-" + std::to_string(last);
    }
    return text;
  }

  MailList list_;
  MailTable table_;
};

TEST_F(MailTableTest, SpaceTogglesTheHighlightedRowsOrTheCurrentOne) {
  std::string changed;
  const auto note = [&](const QModelIndex& first, const QModelIndex& last) {
    changed = std::to_string(first.row()) + "-" + std::to_string(last.row());
  };
  QObject::connect(table_.model(), &QAbstractItemModel::dataChanged, &table_, note);
  // Row 1 is current from the beginning.
  EXPECT_EQ(Press(Qt::Key_Space), "x.....");
  EXPECT_EQ(changed + Highlighted(), "0-0");
  Click(4);
  EXPECT_EQ(ChecksOf(list_), "x.....");  // on the title; only the box checks
  EXPECT_EQ(Press(Qt::Key_Space), "x...x.");
  // All become the opposite of the row that was clicked last.
  Click(3);
  Click(5, Qt::ShiftModifier);
  Click(1, Qt::ControlModifier);
  EXPECT_EQ(Highlighted(), "1 3-5");
  EXPECT_EQ(Press(Qt::Key_Space), "xx.xxx");
  EXPECT_EQ(changed, "0-5");
  EXPECT_EQ(Press(Qt::Key_Return), "x.....");
  QTest::mouseDClick(table_.viewport(), Qt::LeftButton, {}, Place(2, 1).center());
  EXPECT_EQ(ChecksOf(list_), "x.x...");
}

TEST_F(MailTableTest, ABoxStandsForAllHighlightedRows) {
  EXPECT_EQ(ClickBox(1), ".x....1");
  EXPECT_EQ(ClickBox(1), "......1");
  Click(2);
  Click(4, Qt::ShiftModifier);
  EXPECT_EQ(ClickBox(3), "..xxx.2-4");
  EXPECT_EQ(ClickBox(5), "..xxxx5");
  EXPECT_EQ(ClickBox(3, Qt::ControlModifier), "..x.xx3 5");
  std::string told;  // after the highlight is extended
  QObject::connect(&table_, &MailTable::MouseUp, &table_, [&](Qt::KeyboardModifiers held) {
    told = Highlighted() + (held == Qt::ShiftModifier ? " with Shift" : "");
  });
  Click(0);
  EXPECT_EQ(ClickBox(2, Qt::ShiftModifier) + ", " + told, "..x.xx0-2, 0-2 with Shift");
}

TEST_F(MailTableTest, KeysFindRowsAndCopyThem) {
  Press(Qt::Key_End);
  EXPECT_EQ(Current(), "4 berries");
  Press(Qt::Key_Home);
  EXPECT_EQ(Current() + Highlighted(), "Apple0");
  const std::pair<const char*, const char*> table[] = {
      {"b", "Berry"},  {"br", "Bread"}, {"APPLE P", "Apple pie"},
      {"zz", "Apple"}, {"5", "Bread"},  {"4 b", "4 berries"}};
  for (const auto& [typed, found] : table) {
    QTest::keyClicks(&table_, typed);
    EXPECT_EQ(Current(), found);
    Press(Qt::Key_Home);
  }
  Press(Qt::Key_Down, Qt::ShiftModifier);
  Press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "1\tApple\n2\tBerry\n");
}

TEST_F(MailTableTest, AFilterHidesRowsAndKeepsTheirChecks) {
  ClickBox(2);
  table_.Filter("ber");
  EXPECT_EQ(std::to_string(table_.model()->rowCount()) + Current(), "2Berry");
  Press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(Highlighted(), "1 5");
  EXPECT_EQ(Press(Qt::Key_Space), ".xx..x");
  // Digits mean numbers too, and the current row stays where it is shown.
  table_.Filter("4");
  EXPECT_EQ(std::to_string(table_.model()->rowCount()) + Current(), "2Apple pie");
  Press(Qt::Key_End);
  table_.Filter("");
  EXPECT_EQ(std::to_string(table_.model()->rowCount()) + Current(), "64 berries");
  table_.Filter("none");
  list_.CheckAll();
  EXPECT_EQ(Press(Qt::Key_Space), "xxxxxx");
}

TEST_F(MailTableTest, AFilterGoesThroughALongListWhileTheWindowGoesOn) {
  MailList filled;
  for (int row = 0; row < 20000; ++row)
    filled.Append("1", std::string(1500, 'x') + (row % 2 == 0 ? "even" : "odd"));
  list_.Replace(filled);
  table_.Filter("even");
  EXPECT_TRUE(test::WaitUntil([this] { return !table_.Model().IsFiltering(); }));
  EXPECT_EQ(table_.model()->rowCount(), 10000);
  // A key means all rows, and the current one is looked for at once.
  table_.Filter("odd");
  Press(Qt::Key_End);
  EXPECT_EQ(table_.currentIndex().row(), 9999);
  table_.Filter("d");
  EXPECT_EQ(Highlighted(), "19999");
  table_.Filter("even");
  Fill(list_, "1=a|2=b");
  QCoreApplication::processEvents();
  EXPECT_EQ(table_.model()->rowCount(), 2);
}

TEST_F(MailTableTest, AssistiveTechnologyReadsAndTogglesRows) {
  QAccessibleInterface* table = QAccessible::queryAccessibleInterface(&table_);
  const auto cell = [&](int row) { return table->tableInterface()->cellAt(row, 0); };
  cell(3)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(ChecksOf(list_), "...x..");
  const QAccessible::State state = cell(3)->state();
  EXPECT_TRUE(state.checkable && state.focusable && state.checked && !cell(2)->state().checked);
  EXPECT_EQ(cell(3), table->child(table->indexOfChild(cell(3))));
  EXPECT_EQ(cell(3), table->childAt(cell(3)->rect().center().x(), cell(3)->rect().center().y()));
  EXPECT_EQ(table->tableInterface()->cellAt(0, 2), nullptr);
  list_.CheckAll();
  list_.MarkRequested(5, 5);
  EXPECT_EQ(cell(5)->text(QAccessible::Description), "requested");
  table_.Filter("pie");
  EXPECT_EQ(cell(0)->text(QAccessible::Name), "4 Apple pie");
  EXPECT_EQ(cell(1), nullptr);
  EXPECT_EQ(table->child(table->childCount()), nullptr);
}

}  // namespace
}  // namespace brindle
