// Lists that share the texts of another one, and the arrays that hold them.

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "base/flat_array.h"
#include "mail/mail_list.h"
#include "mail/title_search.h"

namespace brindle {
namespace {

std::vector<std::string> TextsOf(const MailList& list) {
  std::vector<std::string> texts;
  for (size_t row = 0; row < list.Size(); ++row) {
    texts.push_back(std::string(list.Number(row)) + " " + std::string(list.Title(row)));
  }
  return texts;
}

TEST(SharedTexts, ResultsKeepTheirRowsWhateverBecomesOfTheList) {
  MailList main;
  for (const char* title : {"Red apple", "green pear", "red pear", "RED plum"}) {
    main.Append(std::to_string(main.Size() + 1), title);
  }
  MailList found;
  found.ShowRowsOf(main, RowNumbersWithTitle(main, "red"));
  const std::vector<std::string> reds = {"1 Red apple", "3 red pear", "4 RED plum"};
  EXPECT_EQ(TextsOf(found), reds);
  found.SetChecked(1, true);
  EXPECT_EQ(main.CheckedCount(), 0U);

  MailList pears;
  pears.ShowRowsOf(found, RowNumbersWithTitle(found, "pear"));
  EXPECT_EQ(TextsOf(pears), std::vector<std::string>{"3 red pear"});
  EXPECT_EQ(pears.CheckedCount(), 0U);

  // What is appended to one list is not seen by the others.
  main.Append("5", "red grape");
  EXPECT_EQ(TextsOf(found), reds);
  pears.Append("9", "x");
  EXPECT_EQ(TextsOf(pears), (std::vector<std::string>{"3 red pear", "9 x"}));
  EXPECT_EQ(main.Title(4), "red grape");
  main.Clear();
  EXPECT_EQ(TextsOf(found), reds);
  EXPECT_TRUE(found.IsChecked(1));
  found.ShowRowsOf(main, {});
  EXPECT_EQ(found.Size(), 0U);
  EXPECT_EQ(RowsWithTitle(found, "red").Count(), 0U);
}

TEST(SharedTexts, SearchingResultsLooksAtTheirRowsOnly) {
  MailList main;
  for (size_t row = 0; row < 400; ++row) {
    main.Append(std::to_string(row), "mail " + std::to_string(row));
  }
  for (const size_t step : {1U, 3U, 50U}) {  // from all rows to a few
    std::vector<std::uint32_t> rows;
    for (size_t row = 1; row < main.Size(); row += step) {
      rows.push_back(static_cast<std::uint32_t>(row));
    }
    MailList part;
    part.ShowRowsOf(main, rows);
    const RowSet found = RowsWithTitle(part, "l 1");
    for (size_t row = 0; row < part.Size(); ++row) {
      EXPECT_EQ(found.Contains(row), part.Title(row).starts_with("mail 1")) << part.Title(row);
    }
  }
}

TEST(FlatArray, KeepsItsValuesWhileItGrowsMovesAndShrinks) {
  FlatArray<std::uint32_t> array;
  constexpr std::uint32_t kValues = 5'000'000;  // large enough for every kind of memory
  for (std::uint32_t i = 0; i < kValues; ++i) array.PushBack(i);
  const auto wrong = [](const FlatArray<std::uint32_t>& values) {
    for (size_t i = 0; i < values.Size(); ++i) {
      if (values[i] != i) return true;
    }
    return false;
  };
  EXPECT_FALSE(wrong(array));
  FlatArray<std::uint32_t> copy = array;
  const FlatArray<std::uint32_t> moved = std::move(array);
  EXPECT_EQ(moved.Size(), kValues);
  EXPECT_FALSE(wrong(moved));
  copy.Shrink(3'000'000);
  copy.GiveBack(3'000'000);
  EXPECT_FALSE(wrong(copy));
  copy.Shrink(1000);
  copy.GiveBack(1000);
  EXPECT_EQ(copy.Capacity(), 1000U);
  EXPECT_FALSE(wrong(copy));
  copy.Reserve(4'000'000);
  EXPECT_FALSE(wrong(copy));
}

}  // namespace
}  // namespace brindle
