// The mail list and its texts, and the search through them with every form of the kernels.
#include "mail/mail_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "base/text.h"
#include "mail/byte_kernels.h"
#include "mail/title_search.h"
#include "support/mail_stage.h"

namespace brindle {
namespace {

struct Changes : MailListObserver {
  void RowsAboutToBeReplaced() override { text += "("; }
  void RowsReplaced() override { text += ")"; }
  void CheckChanged(size_t row) override { text += std::to_string(row); }
  void ChecksChanged() override { text += "*"; }
  std::string text;
};

TEST(MailList, TellsOncePerChangeAndKeepsItsHeaderTrue) {
  MailList list;
  Fill(list, "007=First|2=|-3=\u00E9t\u00E9|4=d|5=e");
  Changes first;
  Changes second;
  list.Observe(first);
  list.Observe(second);
  const auto told = [&] { return std::exchange(first.text, "") + list.TitleHeader().substr(10); };
  for (int twice = 0; twice < 2; ++twice) list.SetChecked(3, true);
  EXPECT_EQ(told(), "3 [1/5]");
  list.StopObserving(second);
  for (int twice = 0; twice < 2; ++twice) list.CheckRange(2, 3);
  EXPECT_EQ(told(), "* [2/5]");
  for (int twice = 0; twice < 2; ++twice) list.CheckAll();
  EXPECT_EQ(told(), "* [5/5]");
  {
    const MailList::BulkChange change(list);
    list.SetChecked(0, false);
    list.UncheckAll();
    const MailList::BulkChange inner(list);
  }
  { const MailList::BulkChange nothing(list); }
  {
    const MailList::BulkChange one(list);
    list.SetChecked(4, true);
  }
  const auto generation = list.Generation();
  list.SetChecked(1, true);
  EXPECT_EQ(told(), "**1 [2/5]");
  EXPECT_EQ(list.Generation(), generation);
  list.ClearBelowHeader();
  EXPECT_EQ(told(), "() [0/5]");
  EXPECT_NE(list.Generation(), generation);
  Fill(list, "1=a|2=b", "x");
  list.Clear();
  EXPECT_EQ(told() + second.text, "()() [0/0]3");
}

TEST(MailList, ChecksAgreeWithATextOfThem) {
  std::mt19937 random(1);
  for (const size_t rows : {1U, 63U, 64U, 65U, 200U}) {
    MailList list;
    for (size_t row = 0; row < rows; ++row) list.Append("1", "");
    std::string model(rows, '.');
    for (int step = 0; step < 300; ++step) {
      const size_t a = random() % rows;
      const size_t length = 1 + random() % (rows - a);
      const size_t what = random() % 8;
      RowSet some(rows);
      some.Set(a, true);
      if (what == 0) list.UncheckAll(), model.assign(rows, '.');
      if (what == 1) list.CheckRange(a, a + length - 1), model.replace(a, length, length, 'x');
      if (what == 2) list.CheckRows(some), model[a] = 'x';
      if (what > 2) list.SetChecked(a, what == 3), model[a] = what == 3 ? 'x' : '.';
      ASSERT_EQ(ChecksOf(list), model);
      ASSERT_EQ(list.CheckedCount(), std::count(model.begin(), model.end(), 'x'));
      ASSERT_EQ(list.NextChecked(a).value_or(std::string::npos), model.find('x', a));
    }
  }
}

TEST(MailList, ResultsKeepTheirRowsWhateverBecomesOfTheList) {
  const std::string reds = "1=Red apple|3=red pear|4=RED plum";
  MailList main;
  MailList found;
  MailList pears;
  Fill(main, "1=Red apple|2=green pear|3=red pear|4=RED plum");
  found.ShowRowsOf(main, RowNumbersWithTitle(main, "red"));
  found.SetChecked(1, true);
  pears.ShowRowsOf(found, RowNumbersWithTitle(found, "pear"));
  EXPECT_EQ(RowsOf(pears) + ChecksOf(pears) + ChecksOf(main), "3=red pear.....");
  // What is appended to one list is not seen by the others.
  main.Append("5", "red grape");
  pears.Append("9", "x");
  EXPECT_EQ(RowsOf(found) + "; " + RowsOf(pears), reds + "; 3=red pear|9=x");
  EXPECT_EQ(main.Title(4), "red grape");
  main.Clear();
  EXPECT_EQ(RowsOf(found) + ChecksOf(found), reds + ".x.");
  found.ShowRowsOf(main, {});
  EXPECT_EQ(found.Size() + RowsWithTitle(found, "red").Count(), 0U);
}

// Runs with each form of the kernels that this machine has.
struct KernelsTest : testing::Test {
  template <typename Check>
  void WithEach(Check check) {
    for (auto kernels = AllKernels(); *kernels != nullptr; ++kernels) {
      SCOPED_TRACE((*kernels)->name);
      UseKernels(*kernels);
      ASSERT_NO_FATAL_FAILURE(check());
    }
    UseKernels(nullptr);
  }
  size_t Number(size_t below) { return random_() % below; }

  std::mt19937 random_{14};
};

TEST_F(KernelsTest, MarkTheBytesAskedForAndNothingBehindThem) {
  constexpr size_t kMasks = 3;
  constexpr std::uint64_t kGuard = 7;
  WithEach([this] {
    for (size_t begin = 0; begin < 140; ++begin) {
      std::string text(begin + kMasks * kMaskBytes, '\0');
      // Bytes that differ from the wanted ones in one bit or by one are the ones to get wrong.
      for (char& c : text) c = "\n\r\x0B\x0C\x0E\x8A\x8D\x09 aA\r"[Number(12)];
      const char* here = text.data() + begin;
      std::uint64_t ends[] = {0, 0, 0, kGuard};
      std::uint64_t pairs[] = {0, 0, 0, kGuard};
      Kernels().lineEnds(here, ends, kMasks);
      const bool any =
          Kernels().pairs(here, {'a', 'A'}, here + kMaskBytes, {'\n', '\n'}, pairs, kMasks - 1);
      for (size_t i = 0; i < kMasks * kMaskBytes; ++i) {
        const auto bit = [i](const std::uint64_t* mask) { return mask[i / 64] >> (i % 64) & 1U; };
        const bool end = here[i] == '\n' || (here[i] == '\r' && here[i + 1] != '\n');
        ASSERT_EQ(bit(ends), end) << begin << " " << i;
        const bool pair =
            i < 128 && (here[i] == 'a' || here[i] == 'A') && here[i + kMaskBytes] == '\n';
        ASSERT_EQ(bit(pairs), pair) << begin << " " << i;
      }
      ASSERT_EQ(any, pairs[0] + pairs[1] > 0);
      ASSERT_EQ(ends[kMasks] + pairs[kMasks], 2 * kGuard);
    }
  });
}

// By looking at every row.
void Compare(const MailList& list, const std::string& wanted) {
  std::vector<std::uint32_t> expected;
  std::vector<std::uint32_t> withNumbers;
  for (std::uint32_t row = 0; row < list.Size(); ++row) {
    const bool title = LowerCase(list.Title(row)).find(wanted) != std::string::npos;
    if (title) expected.push_back(row);
    const bool number = IsAllDigits(wanted) && list.Number(row).starts_with(wanted);
    if (title || number) withNumbers.push_back(row);
  }
  ASSERT_EQ(RowFilter(list, wanted).Next(), withNumbers) << wanted;
  std::vector<std::uint32_t> inParts;
  for (RowFilter filter(list, wanted); !filter.IsDone();) {
    for (const std::uint32_t row : filter.Next(20 * wanted.size())) inParts.push_back(row);
  }
  ASSERT_EQ(inParts, withNumbers) << wanted;
  ASSERT_EQ(RowNumbersWithTitle(list, wanted), expected) << wanted;
  ASSERT_EQ(RowsWithTitle(list, wanted).Count(), expected.size());
}

TEST_F(KernelsTest, SearchFindsTextsOfTheRowsAndAcrossThem) {
  // Few characters, so that matches are common. Among them: lower case is shorter (U+0130, U+1E9E,
  // U+212A) or longer (U+023A), differs in two bytes (U+0440, between U+0400 and U+0461, which have
  // one of each), a combining mark, four bytes, and bytes that are no UTF-8.
  const std::vector<const char*> letters = {
      "a",      "A",      "b",      " ",          "@",      "\u00C4", "\u00E4", "\u0130", "i",
      "\u1E9E", "\u00DF", "\u212A", "k",          "\u0440", "\u0420", "\u0400", "\u0461", "1",
      "\t",     "\u023A", "\u03F4", "\U00010400", "\u0301", "\xC3",   "\x80"};
  WithEach([&] {
    for (size_t length = 1; length <= 80; ++length) {
      MailList list;
      std::string all;
      const size_t choice = length % 2 == 0 ? 5 : letters.size();
      for (size_t left = 1 + Number(300); left > 0; --left) {
        std::string title;
        while (title.size() < Number(2 * length + 8)) title += letters[Number(choice)];
        list.Append(std::to_string(Number(130)), title);
        all += LowerCase(title);
      }
      // Some of the rows, from nearly all to a few, are searched apart.
      std::vector<std::uint32_t> some;
      const auto step = static_cast<std::uint32_t>(1 + Number(20));
      for (std::uint32_t row = 0; row < list.Size(); row += step) some.push_back(row);
      MailList part;
      part.ShowRowsOf(list, some);
      for (int round = 0; round < 6 && all.size() >= length; ++round) {
        // Cut from the rows laid end to end: many of these texts are at a border or across one.
        const std::string wanted = all.substr(Number(all.size() - length + 1), length);
        Compare(list, wanted);
        Compare(part, wanted);
      }
    }
  });
}

}  // namespace
}  // namespace brindle
