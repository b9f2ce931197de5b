#include "mail/list_selection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/fake_dialogs.h"

namespace brindle {
namespace {

class HeaderView : public TitledView {
 public:
  void SetTitleHeader(const std::string& text) override { header = text; }
  std::string header = "as before";
};

class ListSelectionTest : public testing::Test {
 protected:
  // One row a character; "x" is checked. Titles are set by the tests that need them.
  void Fill(const std::string& checks) {
    list.Clear();
    for (size_t row = 0; row < checks.size(); ++row) {
      list.Append(std::to_string(row + 1), "Title");
      list.SetChecked(row, checks[row] == 'x');
    }
    view.header = "as before";
    dialogs.notices.clear();
  }

  std::string Checks() const {
    std::string checks;
    for (size_t row = 0; row < list.Size(); ++row) checks += list.IsChecked(row) ? 'x' : '.';
    return checks;
  }

  std::string OnlyNotice() const {
    if (dialogs.notices.size() != 1) return std::to_string(dialogs.notices.size()) + " notices";
    EXPECT_EQ(dialogs.notices[0].icon, Icon::kInformation);
    return dialogs.notices[0].text;
  }

  FakeDialogs dialogs;
  MailList list;
  HeaderView view;
  ListSelection selection{dialogs};
  SelectTarget main{ListKind::kMain, list, view};
  SelectTarget results{ListKind::kResults, list, view};
};

TEST_F(ListSelectionTest, AllAndNone) {
  Fill(".x.");
  selection.mnuSelectAll_Click(results);
  EXPECT_EQ(Checks(), "xxx");
  EXPECT_EQ(view.header, "Mail Title [3/3]");
  selection.mnuSelectNone_Click(main);
  EXPECT_EQ(Checks(), "...");
  EXPECT_EQ(view.header, "Mail Title [0/3]");
  Fill("x");
  selection.mnuSelectNone_Click(results);
  EXPECT_EQ(Checks(), ".");
  EXPECT_EQ(view.header, "as before");
  EXPECT_TRUE(dialogs.notices.empty());
}

TEST_F(ListSelectionTest, EmptyListsAreRefused) {
  const std::string unloaded =
      "The list is empty. Please load a servers list before going any further.";
  selection.mnuSelectNone_Click(main);
  EXPECT_EQ(OnlyNotice(), "The list is empty, thus, there is nothing to deselect.");
  dialogs.notices.clear();
  selection.mnuSelectBetween_Click(main);
  EXPECT_EQ(OnlyNotice(), unloaded);
  dialogs.notices.clear();
  selection.mnuSelectString_Click(main);
  EXPECT_EQ(OnlyNotice(), unloaded);
  EXPECT_TRUE(dialogs.prompts.empty());
  EXPECT_EQ(view.header, "as before");
  selection.mnuSelectAll_Click(results);
  EXPECT_EQ(view.header, "Mail Title [0/0]");
}

TEST_F(ListSelectionTest, BetweenFillsPairs) {
  const std::string two =
      "In order to select between 2 mails, you need 2 mails selected. Please select another.";
  const std::string even =
      "An even number of mails must be selected. Please select a stopping point or deselect one.";
  const struct {
    const char* before;
    const char* after;
    std::string notice;
  } table[] = {
      {".x..x..x.x", ".xxxx..xxx", ""},
      {".xx.", ".xx.", ""},
      {"x...x", "xxxxx", ""},
      {"....", "....", two},
      {".x..", ".x..", two},
      {"xx.x", "xx.x", even},
  };
  for (const auto& row : table) {
    Fill(row.before);
    selection.mnuSelectBetween_Click(main);
    EXPECT_EQ(Checks(), row.after);
    if (row.notice.empty()) {
      EXPECT_TRUE(dialogs.notices.empty());
      EXPECT_EQ(view.header, MailTitleHeader(list.CheckedCount(), list.Size()));
    } else {
      EXPECT_EQ(OnlyNotice(), row.notice);
      EXPECT_EQ(view.header, "as before");
    }
  }
}

TEST_F(ListSelectionTest, ByStringIgnoresCaseAndCountsCheckedRowsToo) {
  for (const char* title : {"abc", "Abc", "xABCx", "ab c", "", "\u00C4bc"})
    list.Append("77", title);
  list.SetChecked(0, true);
  list.SetChecked(4, true);
  const struct {
    std::optional<std::string> answer;
    std::string checks;
    std::string notice;
  } table[] = {
      {std::nullopt, "x...x.", ""},
      {"  ", "x...x.", ""},
      {"77", "x...x.", "Couldn't find any titles with '77'."},
      {"a*", "x...x.", "Couldn't find any titles with 'a*'."},
      {"ABC", "xxx.x.", "Found and selected 3 with the title 'abc'."},
      {"B C", "xxxxx.", "Found and selected 1 with the title 'b c'."},
      {"\u00E4B", "xxxxxx", "Found and selected 1 with the title '\u00E4b'."},
  };
  for (const auto& row : table) {
    dialogs.notices.clear();
    view.header = "as before";
    dialogs.inputAnswers.push_back(row.answer);
    selection.mnuSelectString_Click(main);
    EXPECT_EQ(Checks(), row.checks);
    EXPECT_EQ(row.notice.empty() ? "0 notices" : row.notice, OnlyNotice());
    EXPECT_EQ(view.header,
              row.notice.empty() ? "as before" : MailTitleHeader(list.CheckedCount(), list.Size()));
  }
  EXPECT_EQ(dialogs.prompts.back(), "Please enter what you would like selected.");
}

TEST_F(ListSelectionTest, ShiftClickChecksHighlightedRows) {
  Fill("x.....");
  const std::vector<RowRange> rows = {{1, 2}, {4, 9}};
  for (const Modifiers other : {Modifiers{}, Modifiers{true, true, false},
                                Modifiers{true, false, true}, Modifiers{false, true, false}}) {
    EXPECT_EQ(selection.lstServerList_MouseUp(list, other, rows), Marking::kDone);
    EXPECT_EQ(Checks(), "x.....");
  }
  EXPECT_EQ(selection.lstServerList_MouseUp(list, {true, false, false}, rows), Marking::kDone);
  EXPECT_EQ(Checks(), "xxx.xx");
  EXPECT_EQ(view.header, "as before");
  selection.lstServerList_ItemCheck(main);
  EXPECT_EQ(view.header, "Mail Title [5/6]");
}

TEST_F(ListSelectionTest, ShiftClickReachesTheFirst32767Rows) {
  const Modifiers shift{true, false, false};
  Fill(std::string(32767, '.'));
  EXPECT_EQ(selection.lstServerList_MouseUp(list, shift, {{32766, 32766}}), Marking::kDone);
  EXPECT_TRUE(list.IsChecked(32766));
  Fill(std::string(40000, '.'));
  EXPECT_EQ(selection.lstServerList_MouseUp(list, shift, {{100, 200}}), Marking::kDone);
  EXPECT_EQ(selection.lstServerList_MouseUp(list, shift, {{32765, 32767}, {39000, 39001}}),
            Marking::kCutShort);
  EXPECT_EQ(list.CheckedCount(), 101U + 2U);
}

}  // namespace
}  // namespace brindle
