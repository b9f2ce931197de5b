// The search window and what it remembers, and the ways of checking many rows at once.
#include "mail/results.h"

#include <gtest/gtest.h>

#include "mail/list_selection.h"
#include "support/mail_stage.h"
#include "support/memory.h"

namespace brindle {
namespace {

// Does what a text says: "list 1=red|2=blue; open; search red; check x".
struct SearchRoom {
  void Do(std::string_view steps) {
    for (const std::string_view step : Split(steps, "; ")) {
      const size_t end = std::min(step.find(' '), step.size() - 1);
      stage.Taken();
      DoStep(step.substr(0, end + 1), step.substr(end + 1));
    }
  }
  void DoStep(std::string_view step, std::string_view what) {
    const bool leaves = step == "return" || step == "close";
    if (step == "list ") Fill(main, what);
    if (step == "find" && results.cmdFind_Click()) stage.Note("found");
    if (step == "open") results.Form_Load(stage);
    if (step == "search ") results.cmdSearch_Click(std::string(what));
    for (size_t i = 0; step == "check " && i < what.size(); ++i) {
      results.Found().SetChecked(i, what[i] == 'x');
    }
    if (step == "selected") results.cmdSelected_Click();
    if (step == "all") results.cmdAll_Click();
    if (leaves && results.cmdReturn_Click({1, 2, 3, 4})) stage.Note("closed");
    if (step == "unload" || step == "close") results.Form_Unload();
    if (step == "yes") stage.answer = "yes";
    if (step == "meanwhile ") stage.onEvents = [this, what] { DoStep(what, ""); };
    if (step == "forget") finds.Clear();
    if (step == "old") options.removeInactiveFinds = true;
    if (step == "broken") files.unreadable.insert("finds");
  }
  std::string Remembered() const {
    std::string texts;
    for (const Find& find : finds.Items().Items()) texts += "|" + find.text;
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

TEST(Search, FindsSendsAndReturns) {
  const auto searched = [](const std::string& text, const std::string& counts) {
    return "'" + text + "'; Searching...; no search; events; " + counts +
           " in 5; search; Search Completed; focus";
  };
  const auto sent = [](const std::string& items) {
    return "no send; send; i Selected " + items + ".";
  };
  const std::string fox = "list 1=A red fox|2=red|22=none|7=SC\u00C9NE Red|9=; open; search ";
  const std::string two = "list 1=ab|2=ab; open; search a; ";
  const std::string lost =
      "! You have items on the list selected but you didn't send them to the main list to be "
      "selected./Are you sure you wish to continue?";
  const std::string odd = "9=a|3=a|-1=a|0=a|2=a|007=a| 1 =a|99999999999999999999=a|+2=a|10=a";
  const std::string replaced = "The list was replaced and searched again";
  // What is done, the journal of the last step, the results, and the checks of the main list.
  const std::tuple<std::string, std::string, std::string> table[] = {
      {"find",
       "i The list is currently empty./So unless you are looking for nothing, you can't use this "
       "feature.",
       " "},
      {"list 1=a; find", "found", " ."},
      {fox + "red", searched("red", "3 of 5"), "1=A red fox|2=red|7=SC\u00C9NE Red ....."},
      {fox + "\u00E9ne", searched("\u00E9ne", "1 of 5"), "7=SC\u00C9NE Red ....."},
      {fox + "red ", searched("red ", "1 of 5"), "1=A red fox ....."},
      {fox + "22", searched("22", "0 of 5"), " ....."},

      {two + "selected", "x There are no items selected to send to the listbox.", "1=ab|2=ab .."},
      {"list 3=a|1=no|2=a; open; search a; check x; selected", sent("1 item"), "3=a|2=a ..x"},
      {"list " + odd + "; open; search a; all", sent("10 items"), odd + " xxx...x.xx"},

      {two + "unload; list 1=a", "", " ."},
      {two + "check xx; list 1=x|2=a two", "1 of 2 in 5; " + replaced, "2=a two .."},

      {two + "check .x; return", lost, "1=ab|2=ab .."},
      {two + "check .x; yes; return", lost + "; closed", "1=ab|2=ab .."},
      {two + "check x.; selected; check xx; return", lost, "1=ab|2=ab x."},
      {two + "all; search b; check x.; return", lost, "1=ab|2=ab xx"},
      // What comes late does not reach a window that was opened in the meantime.
      {two + "meanwhile close; search b", "'b'; Searching...; no search; events; closed", " .."},
      {two + "meanwhile close; search b; open", "'b'", " .."},
  };
  for (const auto& [steps, journal, after] : table) {
    SearchRoom room;
    room.Do(steps);
    EXPECT_EQ(room.stage.Taken(), journal) << steps;
    EXPECT_EQ(RowsOf(room.results.Found()) + " " + ChecksOf(room.main), after) << steps;
  }
}

TEST(Search, RemembersSearchesAndSizes) {
  const std::pair<std::string, std::string> table[] = {
      {"open; search r EDfox ; search new; search NEW", "|blue|green|r EDfox |NEW"},
      {"open; meanwhile close; search x; open", "|Red Fox|blue|green|x"},
      {"old; open", "|green"},
      {"open; forget; search x; close; open", "|x"},
      {"broken; open; search x", "|x"},
  };
  for (const auto& [steps, remembered] : table) {
    SearchRoom room;
    room.options.findDaysIndex = 0;
    room.files.files["finds"] =
        "[finds]\r\ncount=2\r\nitem0=Red Fox\r\ndate0=2026-01-02\r\nitem1=blue\r\n"
        "date1=2026-11-20\r\nitem2=green\r\ndate2=2026-11-21\r\n";
    room.Do(steps);
    EXPECT_EQ(room.Remembered(), remembered) << steps;
  }
  SearchRoom room;
  room.files.files = {{"ini", "[results]\r\nheight=3000\r\ncolumn1=150001\r\ncolumn2=-5\r\n"},
                      {"finds", "x"}};
  room.Do("broken");
  const ResultsGeometry sizes = room.results.Form_Load(room.stage);
  EXPECT_EQ((std::vector{sizes.height, sizes.width, sizes.column1, sizes.column2}),
            (std::vector{3000, 7695, 150000, 0}));
  room.Do("search NEW; return");
  EXPECT_EQ(room.files.files["ini"],
            "[results]\r\nheight=1\r\ncolumn1=3\r\ncolumn2=4\r\nwidth=2\r\n[find]\r\nlast=NEW\r\n");
  EXPECT_EQ(room.files.files["finds"], "x");  // what could not be read is not written over
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
  const struct {
    void (ListSelection::*choose)(MailList&);
    std::string before;
    std::optional<std::string> answer;
    std::string after;
    std::string journal;
  } table[] = {
      {all, ".x....", {}, "xxxxxx", ""},
      {none, "x.x...", {}, "......", ""},
      {none, "", {}, "", "i The list is empty, thus, there is nothing to deselect."},
      {between, ".x..xx", {}, ".x..xx", even},
      {between, "x.x.xx", {}, "xxx.xx", ""},
      {between, "..x...", {}, "..x...", two},
      {between, "", {}, "", unloaded},
      {string, "x...x.", "  ", "x...x.", ask},
      {string, "x...x.", "a*", "x...x.", ask + "; i Couldn't find any titles with 'a*'."},
      {string, "x...x.", "ABC", "xxx.x.", ask + "; i Found and selected 3 with the title 'abc'."},
  };
  for (const auto& row : table) {
    MailStage stage;
    ListSelection selection(stage);
    MailList list;
    if (!row.before.empty()) Fill(list, "77=abc|7=Abc|7=xABCx|7=ab c|7=|7=\u00C4bc", row.before);
    stage.answer = row.answer;
    (selection.*row.choose)(list);
    EXPECT_EQ(ChecksOf(list), row.after) << row.before;
    EXPECT_EQ(stage.Taken(), row.journal) << row.before;
  }
}

TEST(ListSelection, ShiftAloneChecksHighlightedRowsWithinReach) {
  const Modifiers shift{true, false, false};
  const std::vector<RowRange> some = {{1, 2}, {4, 9}};
  const std::tuple<size_t, Modifiers, std::vector<RowRange>, Marking, size_t> table[] = {
      {6, {true, true, false}, some, Marking::kDone, 0},
      {6, shift, some, Marking::kDone, 4},
      {32767, shift, {{32766, 32766}}, Marking::kDone, 1},
      {40000, shift, {{32765, 32767}, {39000, 39001}}, Marking::kCutShort, 2},
  };
  for (const auto& [rows, held, highlighted, marking, checked] : table) {
    MailStage stage;
    MailList list;
    for (size_t i = 0; i < rows; ++i) list.Append("1", "");
    EXPECT_EQ(ListSelection(stage).lstServerList_MouseUp(list, held, highlighted), marking);
    EXPECT_EQ(list.CheckedCount(), checked) << rows;
  }
}

}  // namespace
}  // namespace brindle
