// The search window and what it remembers, and the ways of checking many rows at once.
#include "mail/results.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "mail/list_selection.h"
#include "support/mail_stage.h"
#include "support/memory_files.h"

namespace brindle {
namespace {

struct SearchRoom {
  explicit SearchRoom(std::string_view rows = "") {
    Fill(main, rows);
    results.Form_Load(stage);
    stage.Taken();
  }
  void Search(const std::string& text) {
    results.cmdSearch_Click(text);
    stage.Taken();
  }
  void Check(std::string_view checks) {
    for (size_t row = 0; row < checks.size(); ++row) {
      results.Found().SetChecked(row, checks[row] == 'x');
    }
  }
  std::string Remembered() const {
    std::string texts;
    for (const Find& find : finds.Items().Items()) texts += find.text + "|";
    return texts;
  }

  MailStage stage;
  MemoryFiles files;
  Options options;
  SettingsFile settings{files, "ini"};
  const std::string path = "finds";
  Finds finds{files, path, options, stage};
  MailList main;
  Results results{main, finds, settings, stage, stage, stage};
};

TEST(Search, FindsTitlesInTheOrderOfTheList) {
  SearchRoom room;
  EXPECT_FALSE(room.results.cmdFind_Click());
  EXPECT_EQ(room.stage.Taken(),
            "i The list is currently empty./So unless you are looking for nothing, you can't use "
            "this feature.");
  Fill(room.main, "1=A red fox|2=red|red=none|7=SC\u00C9NE Red|9=", ".x");
  EXPECT_TRUE(room.results.cmdFind_Click());
  EXPECT_EQ(room.stage.Taken(), "");
  const struct {
    const char* text;
    const char* found;
    const char* counts;
  } table[] = {
      {"red", "1=A red fox|2=red|7=SC\u00C9NE Red", "3 of 5"},
      {"RED F", "1=A red fox", "1 of 5"},
      {"\u00E9ne", "7=SC\u00C9NE Red", "1 of 5"},
      {"redfox", "", "0 of 5"},
      {"red ", "1=A red fox", "1 of 5"},  // blanks at the ends count
      {"7", "", "0 of 5"},
  };
  for (const auto& row : table) {
    room.results.cmdSearch_Click(row.text);
    EXPECT_EQ(room.stage.Taken(), "'" + std::string(row.text) +
                                      "'; Searching...; no search; events; " + row.counts +
                                      " in 5; search; Search Completed; focus");
    EXPECT_EQ(RowsOf(room.results.Found()), row.found) << row.text;
    EXPECT_EQ(room.results.Found().CheckedCount(), 0U);
    EXPECT_EQ(room.settings.ReadSetting("find", "last"), row.text);
  }
  room.results.cmdSearch_Click("   ");
  EXPECT_EQ(room.stage.Taken(), "");
  EXPECT_EQ(room.settings.ReadSetting("find", "last"), "7");
}

TEST(Search, SendsChecksByPosition) {
  const std::string done = "no send; send; i Selected ";
  const struct {
    const char* rows;
    const char* checks;
    void (Results::*send)();
    std::string journal;
    const char* after;
  } table[] = {
      {"1=a", ".", &Results::cmdSelected_Click,
       "x There are no items selected to send to the listbox.", "."},
      {"3=a|1=no|2=a", "x.", &Results::cmdSelected_Click, done + "1 item.", "..x"},
      {"3=a|1=a|2=no", "xx", &Results::cmdSelected_Click, done + "2 items.", "x.x"},
      {"101=no", "", &Results::cmdAll_Click, done + "0 items.", "."},
      {"9=a|3=a|-1=a|0=a|2.5=a|007=a| 1 =a|99999999999999999999=a|+2=a|10=a", "x",
       &Results::cmdAll_Click, done + "10 items.", "xxx...x.xx"},
  };
  for (const auto& row : table) {
    SearchRoom room(row.rows);
    room.Search("a");
    room.Check(row.checks);
    (room.results.*row.send)();
    EXPECT_EQ(room.stage.Taken(), row.journal) << row.rows;
    EXPECT_EQ(ChecksOf(room.main), row.after) << row.rows;
  }
}

TEST(Search, FollowsTheListThatIsLoaded) {
  SearchRoom room("1=red|2=blue|3=red");
  Fill(room.main, "5=other|3=red|7=red");
  EXPECT_EQ(room.stage.Taken(), "");
  room.Search("Red");
  room.Check("x");
  Fill(room.main, "1=x|2=red two");
  EXPECT_EQ(room.stage.Taken(), "1 of 2 in 5; The list was replaced and searched again");
  EXPECT_EQ(RowsOf(room.results.Found()) + ChecksOf(room.results.Found()), "2=red two.");
  room.results.cmdAll_Click();
  EXPECT_EQ(ChecksOf(room.main), ".x");
  room.results.Form_Unload();
  EXPECT_EQ(room.results.Found().TitleHeader(), "Mail Title [0/0]");
  room.stage.Taken();
  Fill(room.main, "1=red");
  EXPECT_EQ(room.stage.Taken(), "");
}

TEST(Search, AsksBeforeChecksAreLeftBehind) {
  const std::function<void(SearchRoom&)> table[] = {
      // Nothing is left behind:
      [](SearchRoom& room) { room.Check(".."); },
      [](SearchRoom& room) { room.Check(".x"), room.results.cmdSelected_Click(); },
      [](SearchRoom& room) { room.results.cmdAll_Click(), room.Check("xx"); },
      // Something is:
      [](SearchRoom& room) { room.Check(".x"); },
      [](SearchRoom& room) {
        room.Check("x."), room.results.cmdSelected_Click(), room.Check("xx");
      },
      [](SearchRoom& room) { room.results.cmdAll_Click(), room.Search("b"), room.Check("x"); },
  };
  for (size_t i = 0; i < std::size(table); ++i) {
    SearchRoom room("1=ab|2=ab");
    room.Search("a");
    table[i](room);
    room.stage.Taken();
    room.files.changes.clear();
    EXPECT_EQ(room.results.cmdReturn_Click({}), i < 3) << i;
    EXPECT_EQ(room.stage.Taken(),
              i < 3 ? ""
                    : "! You have items on the list selected but you didn't send them to the main "
                      "list to be selected./Are you sure you wish to continue?");
    EXPECT_EQ(room.files.changes.size(), i < 3 ? 2U : 0U);
    room.stage.answer = "yes";
    EXPECT_TRUE(room.results.cmdReturn_Click({}));
  }
}

TEST(Search, KeepsTheFindOfAWindowThatIsClosedMeanwhile) {
  SearchRoom room("1=red");
  const auto close = [&] { room.results.cmdReturn_Click({}), room.results.Form_Unload(); };
  const std::string begun = "'red'; Searching...; no search; events";
  room.stage.onEvents = close;
  room.results.cmdSearch_Click("red");
  EXPECT_EQ(room.stage.Taken(), begun);
  EXPECT_NE(room.files.files["finds"].find("item0=red\r\n"), std::string::npos);
  // Closed and opened again: what comes late does not reach the new window.
  room.results.Form_Load(room.stage);
  EXPECT_EQ(room.stage.Taken(), "'red'");
  room.stage.onEvents = [&] { close(), room.results.Form_Load(room.stage); };
  room.results.cmdSearch_Click("red");
  EXPECT_EQ(room.stage.Taken(), begun + "; 'red'");
}

TEST(Search, RemembersSearchesAndSizes) {
  const std::string stored =
      "[finds]\r\ncount=2\r\nitem0=Red Fox\r\ndate0=2026-01-02\r\nitem1=blue\r\n"
      "date1=2026-11-20\r\nitem2=green\r\ndate2=2026-11-21\r\n";
  SearchRoom room("1=x");
  room.files.files = {{"finds", stored},
                      {"ini", "[results]\r\nheight=3000\r\ncolumn1=150001\r\ncolumn2=-5\r\n"}};
  const ResultsGeometry sizes = room.results.Form_Load(room.stage);
  EXPECT_EQ(sizes.height, 3000);
  EXPECT_EQ(sizes.width, 7695);
  EXPECT_EQ(sizes.column1, 150000);
  EXPECT_EQ(sizes.column2, 0);
  EXPECT_EQ(room.Remembered(), "Red Fox|blue|green|");
  for (const char* text : {"r EDfox ", "new", "NEW"}) room.Search(text);
  EXPECT_EQ(room.Remembered(), "blue|green|r EDfox |NEW|");
  EXPECT_TRUE(room.results.cmdReturn_Click({1, 2, 3, 4}));
  EXPECT_EQ(room.files.files["ini"],
            "[results]\r\nheight=1\r\ncolumn1=3\r\ncolumn2=4\r\nwidth=2\r\n"
            "[find]\r\nlast=NEW\r\n");
  // Old ones are dropped when that is wanted, at the next opening.
  room.options.removeInactiveFinds = true;
  room.options.findDaysIndex = 0;
  room.finds.Load();
  EXPECT_EQ(room.Remembered(), "green|r EDfox |NEW|");
  // What could not be read is not written over.
  room.files.unreadable.insert("finds");
  room.finds.Load();
  EXPECT_EQ(room.Remembered(), "");
  room.files.changes.clear();
  room.results.Save({});
  EXPECT_EQ(room.files.changes, std::vector<std::string>{"replace ini"});
  // What is cleared while the window is open does not come back.
  room.files.unreadable.clear();
  room.finds.Load();
  room.finds.Clear();
  EXPECT_FALSE(room.files.FileExists("finds"));
  room.results.Save({});
  room.finds.Load();
  EXPECT_EQ(room.Remembered(), "");
}

TEST(ListSelection, ChecksRowsByTheMenu) {
  const auto all = &ListSelection::mnuSelectAll_Click;
  const auto none = &ListSelection::mnuSelectNone_Click;
  const auto between = &ListSelection::mnuSelectBetween_Click;
  const auto string = &ListSelection::mnuSelectString_Click;
  const std::string unloaded =
      "i The list is empty. Please load a servers list before going any further.";
  const std::string two =
      "i In order to select between 2 mails, you need 2 mails selected. Please select another.";
  const std::string even =
      "i An even number of mails must be selected. Please select a stopping point or deselect one.";
  const std::string ask = "? Please enter what you would like selected.";
  const std::string titles = "7=abc|7=Abc|7=xABCx|7=ab c|7=|7=\u00C4bc";
  const struct {
    void (ListSelection::*choose)(MailList&);
    std::string before;
    std::optional<std::string> answer;
    std::string after;
    std::string journal;
  } table[] = {
      {all, ".x....", {}, "xxxxxx", ""},
      {all, "", {}, "", ""},
      {none, "x.x...", {}, "......", ""},
      {none, "", {}, "", "i The list is empty, thus, there is nothing to deselect."},
      {between, ".x..xx", {}, ".x..xx", even},
      {between, "x..xxx", {}, "xxxxxx", ""},
      {between, ".xx...", {}, ".xx...", ""},
      {between, "x.x.xx", {}, "xxx.xx", ""},
      {between, "......", {}, "......", two},
      {between, "..x...", {}, "..x...", two},
      {between, "", {}, "", unloaded},
      {string, "x...x.", {}, "x...x.", ask},
      {string, "x...x.", "  ", "x...x.", ask},
      {string, "x...x.", "77", "x...x.", ask + "; i Couldn't find any titles with '77'."},
      {string, "x...x.", "a*", "x...x.", ask + "; i Couldn't find any titles with 'a*'."},
      {string, "x...x.", "ABC", "xxx.x.", ask + "; i Found and selected 3 with the title 'abc'."},
      {string, "......", "B C", "...x..", ask + "; i Found and selected 1 with the title 'b c'."},
      {string, "", "a", "", unloaded},
  };
  for (const auto& row : table) {
    MailStage stage;
    ListSelection selection(stage);
    MailList list;
    if (!row.before.empty()) Fill(list, titles, row.before);
    stage.answer = row.answer;
    (selection.*row.choose)(list);
    EXPECT_EQ(ChecksOf(list), row.after) << row.before;
    EXPECT_EQ(stage.Taken(), row.journal) << row.before;
  }
}

TEST(ListSelection, ShiftAloneChecksHighlightedRowsWithinReach) {
  const std::vector<RowRange> some = {{1, 2}, {4, 9}};
  const struct {
    size_t rows;
    Modifiers held;
    std::vector<RowRange> highlighted;
    Marking marking;
    size_t checked;  // besides the first row
  } table[] = {
      {6, {}, some, Marking::kDone, 0},
      {6, {true, true, false}, some, Marking::kDone, 0},
      {6, {true, false, true}, some, Marking::kDone, 0},
      {6, {true, false, false}, some, Marking::kDone, 4},
      {32767, {true, false, false}, {{32766, 32766}}, Marking::kDone, 1},
      {40000, {true, false, false}, {{100, 200}}, Marking::kDone, 101},
      {40000, {true, false, false}, {{32765, 32767}, {39000, 39001}}, Marking::kCutShort, 2},
  };
  for (const auto& row : table) {
    MailStage stage;
    MailList list;
    for (size_t i = 0; i < row.rows; ++i) list.Append("1", "");
    list.SetChecked(0, true);
    EXPECT_EQ(ListSelection(stage).lstServerList_MouseUp(list, row.held, row.highlighted),
              row.marking);
    EXPECT_EQ(list.CheckedCount(), 1 + row.checked) << row.rows;
    EXPECT_TRUE(row.checked == 0 || list.IsChecked(std::min(row.highlighted[0].first, row.rows)));
  }
}

}  // namespace
}  // namespace brindle
