#include "mail/results.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "mail/stored_results.h"
#include "support/fake_clock.h"
#include "support/fake_dialogs.h"
#include "support/memory_files.h"

namespace brindle {
namespace {

using Texts = std::vector<std::string>;
using Notices = std::vector<FakeDialogs::Shown>;

class FakeHeader : public TitledView {
 public:
  void SetTitleHeader(const std::string& text) override { header = text; }
  std::string header;
};

class FakeResultsView : public ResultsView {
 public:
  void SetTitleHeader(const std::string& newText) override { header = newText; }
  void SetSearchText(const std::string& newText) override { text = newText; }
  void SetSearchCaption(const std::string& newText) override { caption = newText; }
  void EnableSearch(bool enabled) override { searchEnabled = enabled; }
  void EnableSending(bool enabled) override { sendingEnabled = enabled; }
  void SetCounts(size_t searched, size_t matches, TickCount) override {
    counts = std::to_string(searched) + " " + std::to_string(matches);
  }
  void FocusSearch() override { ++focused; }

  std::string header, text, caption, counts;
  bool searchEnabled = true;
  bool sendingEnabled = true;
  int focused = 0;
};

class ResultsTest : public testing::Test {
 protected:
  ResultsTest() {
    clock.localTime.tm_year = 126;
    clock.localTime.tm_mon = 10;
    clock.localTime.tm_mday = 21;
  }

  void Fill(std::vector<std::pair<const char*, const char*>> mails) {
    MailList filled;
    for (const auto& [number, title] : mails) filled.Append(number, title);
    main.Replace(filled);
  }
  void Search(const std::string& text) { results.cmdSearch_Click(text); }
  std::string Found() {
    std::string found;
    for (size_t row = 0; row < results.Found().Size(); ++row) {
      found += std::string(results.Found().Number(row)) + ":" +
               std::string(results.Found().Title(row)) + "|";
    }
    return found;
  }
  Texts FindTexts() {
    Texts texts;
    for (const Find& find : results.Finds().Items()) texts.push_back(find.text);
    return texts;
  }
  // The positions, from 1, that are checked in the main list.
  std::string Checked() {
    std::string checked;
    for (size_t row = 0; row < main.Size(); ++row) {
      if (main.IsChecked(row)) checked += std::to_string(row + 1) + " ";
    }
    return checked;
  }
  std::string LastNotice() { return dialogs.notices.empty() ? "" : dialogs.notices.back().text; }

  FakeClock clock;
  FakeDialogs dialogs;
  MemoryFiles files;
  Options options;
  SettingsFile settings{files, "ini"};
  const std::string findsPath = "finds";
  StoredResults store{settings, files, findsPath, options, clock};
  MailList main;
  FakeHeader mainHeader;
  FakeResultsView view;
  Results results{main, mainHeader, store, dialogs, clock, clock};
};

TEST_F(ResultsTest, SearchesTitlesInTheOrderOfTheList) {
  EXPECT_FALSE(results.cmdFind_Click());
  EXPECT_EQ(dialogs.notices,
            (Notices{{Icon::kInformation,
                      "The list is currently empty.\r\nSo unless you are looking for nothing, you "
                      "can't use this feature."}}));
  Fill({{"1", "A red fox"}, {"2", "red"}, {"red", "none"}, {"7", "SC\u00C9NE Red"}, {"9", ""}});
  main.SetChecked(1, true);
  EXPECT_TRUE(results.cmdFind_Click());
  results.Form_Load(view);
  const struct {
    const char* text;
    const char* found;
    const char* counts;
  } table[] = {
      {"red", "1:A red fox|2:red|7:SC\u00C9NE Red|", "5 3"},
      {"RED F", "1:A red fox|", "5 1"},
      {"\u00E9ne", "7:SC\u00C9NE Red|", "5 1"},
      {"redfox", "", "5 0"},
      {"red ", "1:A red fox|", "5 1"},  // blanks at the ends count
      {"7", "", "5 0"},
  };
  for (const auto& row : table) {
    view.caption.clear();
    clock.onEvents = [&] {
      EXPECT_EQ(view.caption, "Searching...");
      EXPECT_FALSE(view.searchEnabled);
    };
    Search(row.text);
    EXPECT_EQ(Found(), row.found) << row.text;
    EXPECT_EQ(view.counts, row.counts) << row.text;
    EXPECT_EQ(view.header, "Mail Title [0/" + std::to_string(results.Found().Size()) + "]");
    EXPECT_EQ(results.Found().CheckedCount(), 0U);
    EXPECT_EQ(view.caption, "Search Completed");
    EXPECT_TRUE(view.searchEnabled);
    EXPECT_EQ(store.LastSearch(), row.text);
  }
  EXPECT_EQ(view.focused, 6);
  EXPECT_EQ(view.header, "Mail Title [0/0]");
  files.changes.clear();
  Search("   ");
  EXPECT_EQ(files.changes, Texts{});
  EXPECT_EQ(view.focused, 6);
  // Closed while the window events ran.
  clock.onEvents = [this] { results.Form_Unload(); };
  Search("red");
  EXPECT_EQ(view.focused, 6);
}

TEST_F(ResultsTest, ARememberedSearchMovesToTheEnd) {
  files.files["finds"] =
      "[finds]\r\ncount=2\r\nitem0=Red Fox\r\ndate0=2026-01-02\r\nitem1=blue\r\n"
      "date1=2026-11-20\r\nitem2=green\r\ndate2=2026-11-21\r\n";
  files.files["ini"] = "[find]\r\nlast=blue\r\n[results]\r\nheight=3000\r\ncolumn2=-5\r\n";
  Fill({{"1", "x"}});
  const ResultsGeometry geometry = results.Form_Load(view);
  EXPECT_EQ(geometry.height, 3000);
  EXPECT_EQ(geometry.width, 7695);
  EXPECT_EQ(geometry.column1, 0);
  EXPECT_EQ(geometry.column2, 0);
  EXPECT_EQ(view.text, "blue");
  EXPECT_EQ(FindTexts(), (Texts{"Red Fox", "blue", "green"}));
  for (const char* text : {"r EDfox ", "new", "NEW"}) {
    view.text.clear();
    Search(text);
    EXPECT_EQ(view.text, text);
  }
  EXPECT_EQ(FindTexts(), (Texts{"blue", "green", "r EDfox ", "NEW"}));
  EXPECT_TRUE(results.cmdReturn_Click({1, 2, 3, 4}));
  EXPECT_EQ(files.files["ini"],
            "[find]\r\nlast=NEW\r\n[results]\r\nheight=1\r\ncolumn2=4\r\nwidth=2\r\ncolumn1=3\r\n");
  const std::vector<Find> saved = {{"blue", DayFromText("2026-11-20")},
                                   {"green", DayFromText("2026-11-21")},
                                   {"r EDfox ", DayFromText("2026-11-21")},
                                   {"NEW", DayFromText("2026-11-21")}};
  EXPECT_EQ(store.Finds(), saved);
  // Old ones are dropped when that is wanted, at the next opening.
  options.removeInactiveFinds = true;
  options.findDaysIndex = 0;
  results.Form_Load(view);
  EXPECT_EQ(FindTexts(), (Texts{"green", "r EDfox ", "NEW"}));
  // What could not be read is not written over.
  files.unreadable.insert("finds");
  results.Form_Load(view);
  EXPECT_EQ(FindTexts(), Texts{});
  files.changes.clear();
  results.Save({});
  EXPECT_EQ(files.changes, Texts{"replace ini"});
}

TEST_F(ResultsTest, SendsChecksBackByPosition) {
  Fill({{"100", "t"},
        {"3", "t"},
        {"-1", "t"},
        {"0", "t"},
        {"2.5", "t"},
        {"007", "t"},
        {" 1 ", "t"},
        {"99999999999999999999", "t"},
        {"+2", "t"},
        {"8", "other"}});
  results.Form_Load(view);
  results.cmdSelected_Click();
  EXPECT_EQ(dialogs.notices,
            (Notices{{Icon::kCritical, "There are no items selected to send to the listbox."}}));
  Search("t");
  ASSERT_EQ(results.Found().Size(), 10U);
  Search("other");
  results.Found().SetChecked(0, true);
  results.cmdSelected_Click();
  EXPECT_EQ(Checked(), "8 ");
  EXPECT_EQ(LastNotice(), "Selected 1 item.");
  EXPECT_EQ(mainHeader.header, "Mail Title [1/10]");
  Search("t");
  results.Found().CheckRange(0, 1);
  results.cmdSelected_Click();
  EXPECT_EQ(Checked(), "3 8 ");
  EXPECT_EQ(LastNotice(), "Selected 2 items.");
  EXPECT_EQ(results.Found().CheckedCount(), 2U);
  results.cmdAll_Click();
  EXPECT_EQ(Checked(), "1 2 3 7 8 ");
  EXPECT_EQ(dialogs.notices.back(), (FakeDialogs::Shown{Icon::kInformation, "Selected 10 items."}));
  EXPECT_EQ(mainHeader.header, "Mail Title [5/10]");
  EXPECT_TRUE(view.sendingEnabled);
  // The list has been replaced by a shorter one meanwhile.
  Fill({{"1", "t"}});
  results.cmdAll_Click();
  EXPECT_EQ(Checked(), "1 ");
}

TEST_F(ResultsTest, LooksUpRow100WhateverItsNumber) {
  MailList filled;
  for (int i = 100; i < 300; ++i) filled.Append(std::to_string(i), i == 100 ? "first" : "t");
  main.Replace(filled);
  results.Form_Load(view);
  Search("first");
  results.cmdAll_Click();
  EXPECT_EQ(Checked(), "100 ");
  EXPECT_EQ(main.Number(99), "199");
}

TEST_F(ResultsTest, AsksBeforeChecksAreLeftBehind) {
  Fill({{"1", "a"}, {"2", "a"}});
  results.Form_Load(view);
  Search("a");
  EXPECT_TRUE(results.cmdReturn_Click({}));
  EXPECT_EQ(dialogs.questions.size(), 0U);
  results.Found().SetChecked(1, true);
  dialogs.questionAnswers = {false, true};
  files.changes.clear();
  EXPECT_FALSE(results.cmdReturn_Click({}));
  EXPECT_EQ(files.changes, Texts{});
  EXPECT_TRUE(results.cmdReturn_Click({}));
  EXPECT_EQ(files.changes, (Texts{"replace ini", "replace finds"}));
  EXPECT_EQ(dialogs.questions[0].text,
            "You have items on the list selected but you didn't send them to the main list to be "
            "selected.\r\nAre you sure you wish to continue?");
  // A window opened anew begins without results.
  results.Form_Load(view);
  EXPECT_EQ(Found(), "");
}

}  // namespace
}  // namespace brindle
