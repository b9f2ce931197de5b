// The widgets that show the program's lists: the combo box that leaves typed text alone, and the
// table of mails.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest/QTest>
#include <functional>
#include <string>

#include "support/fake_dialogs.h"
#include "ui/list_combo_box.h"
#include "ui/mail_table.h"

namespace brindle {
namespace {

using Texts = ObservedList<std::string>;
constexpr std::optional<size_t> kNone;

TEST(ListComboBoxTest, ChangesOfTheListLeaveTheTextAlone) {
  const struct {
    const char* name;
    std::vector<std::string> items;
    std::optional<size_t> selected;
    const char* typed;  // null: what the selected item says
    std::function<void(Texts&)> change;
    const char* text;
    std::optional<size_t> selectedAfter;
  } table[] = {
      {"first comes", {}, kNone, "ty", [](Texts& list) { list.Add("a"); }, "ty", kNone},
      {"first comes, no text", {}, kNone, "", [](Texts& list) { list.Add("a"); }, "", kNone},
      {"another comes", {"a"}, kNone, "ty", [](Texts& list) { list.Add("b"); }, "ty", kNone},
      {"beside a selected", {"a"}, 0, nullptr, [](Texts& list) { list.Add("b"); }, "a", 0},
      {"beside an edited", {"a"}, 0, "ab", [](Texts& list) { list.Add("b"); }, "ab", kNone},
      {"earlier goes", {"a", "b"}, 1, nullptr, [](Texts& l) { l.RemoveAt(0); }, "b", 0},
      {"later goes", {"a", "b"}, 0, nullptr, [](Texts& l) { l.RemoveAt(1); }, "a", 0},
      {"selected goes", {"a", "b"}, 0, nullptr, [](Texts& l) { l.RemoveAt(0); }, "", kNone},
      {"edited goes", {"a", "b"}, 0, "ab", [](Texts& l) { l.RemoveAt(0); }, "ab", kNone},
      {"last goes", {"a"}, kNone, "ty", [](Texts& list) { list.RemoveAt(0); }, "ty", kNone},
      {"cleared", {"a", "b"}, kNone, "ty", [](Texts& list) { list.Clear(); }, "ty", kNone},
      {"selected is cleared", {"a"}, 0, nullptr, [](Texts& list) { list.Clear(); }, "", kNone},
      {"twins", {"a", "a"}, 1, nullptr, [](Texts& list) { list.RemoveAt(0); }, "a", 0},
  };
  for (const auto& row : table) {
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
    EXPECT_EQ(box.Selected(), row.typed != nullptr ? kNone : row.selected) << row.name;
    row.change(list);
    EXPECT_EQ(box.currentText().toStdString(), row.text) << row.name;
    EXPECT_EQ(box.Selected(), row.selectedAfter) << row.name;
    EXPECT_TRUE(row.typed == nullptr || box.lineEdit()->cursorPosition() == cursor) << row.name;
    EXPECT_EQ(box.count(), static_cast<int>(list.Size())) << row.name;
  }
}

TEST(ListComboBoxTest, NothingKnownTakesThePlaceOfWhatIsTyped) {
  Texts list;
  ListComboBox box;
  box.Attach(list);
  list.Add("MailBot");
  const QSignalSpy picked(&box, &ListComboBox::Picked);
  QTest::keyClicks(box.lineEdit(), "mail");
  EXPECT_EQ(box.currentText(), "mail");
  QTest::keyClick(box.lineEdit(), Qt::Key_Return);
  EXPECT_EQ(box.currentText(), "mail");
  EXPECT_EQ(box.count(), 1);
  EXPECT_EQ(picked.count(), 0);
  box.Select(0);
  box.Select(kNone);
  EXPECT_EQ(box.currentText(), "");
  EXPECT_EQ(picked.count(), 2);
}

class MailTableTest : public testing::Test {
 protected:
  MailTableTest() {
    MailList filled;
    for (int i = 1; i <= 6; ++i) filled.Append(std::to_string(i), "Title");
    list_.Replace(filled);
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
  std::string Checks() const {
    std::string checks;
    for (size_t row = 0; row < list_.Size(); ++row) checks += list_.IsChecked(row) ? 'x' : '.';
    return checks;
  }

  MailList list_;
  MailTable table_;
};

TEST_F(MailTableTest, SpaceTogglesTheHighlightedRows) {
  const QSignalSpy toggled(&table_, &MailTable::CheckToggled);
  QTest::keyClick(&table_, Qt::Key_Space);
  EXPECT_EQ(Checks(), "......");
  Click(4);
  EXPECT_EQ(Checks(), "......");  // on the title; only the box checks
  QTest::keyClick(&table_, Qt::Key_Space);
  EXPECT_EQ(Checks(), "....x.");
  // All become the opposite of the row that was clicked last.
  Click(3);
  Click(5, Qt::ShiftModifier);
  Click(0, Qt::ControlModifier);
  const std::vector<RowRange> highlighted = table_.HighlightedRows();
  ASSERT_EQ(highlighted.size(), 2U);
  EXPECT_EQ(highlighted[0].first + 10 * highlighted[0].last, 0U);
  EXPECT_EQ(highlighted[1].first + 10 * highlighted[1].last, 53U);
  QTest::keyClick(&table_, Qt::Key_Space);
  EXPECT_EQ(Checks(), "x..xxx");
  QTest::keyClick(&table_, Qt::Key_Space);
  EXPECT_EQ(Checks(), "......");
  EXPECT_EQ(toggled.count(), 3);
  table_.SetTitleHeader("Mail Title [0/6]");
  EXPECT_EQ(table_.model()->headerData(1, Qt::Horizontal), "Mail Title [0/6]");
}

TEST_F(MailTableTest, ShiftAndClickChecksWhatItHighlights) {
  FakeDialogs dialogs;
  ListSelection selection(dialogs);
  QObject::connect(&table_, &MailTable::MouseUp, &table_, [&](Qt::KeyboardModifiers held) {
    const Modifiers modifiers{held.testFlag(Qt::ShiftModifier), held.testFlag(Qt::ControlModifier),
                              held.testFlag(Qt::AltModifier)};
    selection.lstServerList_MouseUp(list_, modifiers, table_.HighlightedRows());
  });
  Click(1);
  Click(3, Qt::ControlModifier);
  EXPECT_EQ(Checks(), "......");
  Click(5, Qt::ShiftModifier);
  EXPECT_EQ(Checks(), ".x.xxx");
  // What was checked stays so.
  Click(0);
  Click(1, Qt::ShiftModifier);
  EXPECT_EQ(Checks(), "xx.xxx");
}

}  // namespace
}  // namespace brindle
