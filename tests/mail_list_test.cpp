// The mail list and its texts, and the search through them with every form of the kernels.
#include "mail/mail_list.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <vector>

#include "base/encoding.h"
#include "base/text.h"
#include "mail/byte_kernels.h"
#include "mail/lower_titles.h"
#include "mail/title_search.h"
#include "support/mail_stage.h"

namespace brindle {
namespace {

class Journal : public MailListObserver {
 public:
  void RowsAboutToBeReplaced() override { text += "("; }
  void RowsReplaced() override { text += ")"; }
  void CheckChanged(size_t row) override { text += std::to_string(row); }
  void ChecksChanged() override { text += "*"; }
  std::string text;
};

TEST(MailList, TellsItsObserversOncePerChange) {
  MailList list;
  Fill(list, "007=First|2=|-3=\u00E9t\u00E9|4=d|5=e");
  EXPECT_EQ(RowsOf(list), "007=First|2=|-3=\u00E9t\u00E9|4=d|5=e");
  Journal first;
  Journal second;
  list.Observe(first);
  list.Observe(second);
  list.SetChecked(3, true);
  list.SetChecked(3, true);
  list.StopObserving(second);
  list.CheckAll();
  list.CheckAll();
  {
    const MailList::BulkChange change(list);
    list.SetChecked(0, false);
    list.UncheckAll();
  }
  { const MailList::BulkChange nothing(list); }
  const auto generation = list.Generation();
  list.SetChecked(1, true);
  EXPECT_EQ(list.Generation(), generation);
  EXPECT_EQ(list.TitleHeader(), "Mail Title [1/5]");
  list.ClearBelowHeader();
  EXPECT_EQ(list.TitleHeader(), "Mail Title [0/5]");
  EXPECT_NE(list.Generation(), generation);
  Fill(list, "1=a|2=b", "x");
  EXPECT_EQ(list.TitleHeader(), "Mail Title [1/2]");
  list.Clear();
  EXPECT_EQ(list.TitleHeader(), "Mail Title [0/0]");
  EXPECT_EQ(first.text, "3**1()()()");
  EXPECT_EQ(second.text, "3");
}

TEST(MailList, KeepsTheCheckedCountThroughAnyChange) {
  std::mt19937 random(1);
  for (const size_t rows : {1U, 63U, 64U, 65U, 200U}) {
    MailList list;
    for (size_t row = 0; row < rows; ++row) list.Append("1", "");
    std::set<size_t> model;
    for (int step = 0; step < 300; ++step) {
      const size_t a = random() % rows;
      const size_t b = a + random() % (rows - a);
      RowSet some(rows);
      some.Set(a, true);
      some.Set(b, true);
      switch (random() % 8) {
        case 0:
          list.CheckRange(a, b);
          for (size_t row = a; row <= b; ++row) model.insert(row);
          break;
        case 1:
          list.CheckRows(some);
          model.insert({a, b});
          break;
        case 2:
          list.UncheckAll();
          model.clear();
          break;
        case 3:
          list.SetChecked(a, true);
          model.insert(a);
          break;
        default:
          list.SetChecked(a, false);
          model.erase(a);
      }
      ASSERT_EQ(list.CheckedCount(), model.size());
      std::set<size_t> walked;
      for (auto row = list.NextChecked(0); row; row = list.NextChecked(*row + 1)) {
        walked.insert(*row);
      }
      ASSERT_EQ(walked, model);
    }
  }
}

TEST(MailList, ResultsKeepTheirRowsWhateverBecomesOfTheList) {
  const std::string reds = "1=Red apple|3=red pear|4=RED plum";
  MailList main;
  for (const char* title : {"Red apple", "green pear", "red pear", "RED plum"}) {
    main.Append(std::to_string(main.Size() + 1), title);
  }
  MailList found;
  found.ShowRowsOf(main, RowNumbersWithTitle(main, "red"));
  found.SetChecked(1, true);
  EXPECT_EQ(RowsOf(found) + ChecksOf(main), reds + "....");
  MailList pears;
  pears.ShowRowsOf(found, RowNumbersWithTitle(found, "pear"));
  EXPECT_EQ(RowsOf(pears) + ChecksOf(pears), "3=red pear.");
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

TEST(FlatArray, KeepsItsValuesWhileItGrowsMovesAndShrinks) {
  FlatArray<std::uint32_t> array;
  constexpr std::uint32_t kValues = 5'000'000;  // large enough for every kind of memory
  for (std::uint32_t i = 0; i < kValues; ++i) array.PushBack(i);
  const auto kept = [](const FlatArray<std::uint32_t>& values, size_t size) {
    for (size_t i = 0; i < size; ++i) {
      if (values[i] != i) return false;
    }
    return values.Size() == size;
  };
  EXPECT_TRUE(kept(array, kValues));
  FlatArray<std::uint32_t> copy = array;
  const FlatArray<std::uint32_t> moved = std::move(array);
  EXPECT_TRUE(kept(moved, kValues));
  for (const size_t size : {3'000'000U, 1000U}) {
    copy.Shrink(size);
    copy.GiveBack(size);
    EXPECT_TRUE(kept(copy, size));
  }
  EXPECT_EQ(copy.Capacity(), 1000U);
  copy.Reserve(4'000'000);
  EXPECT_TRUE(kept(copy, 1000));
}

// Runs with each form of the kernels that this machine has.
class KernelsTest : public testing::TestWithParam<const ByteKernels*> {
 protected:
  KernelsTest() { UseKernels(GetParam()); }
  ~KernelsTest() override { UseKernels(nullptr); }

  size_t Number(size_t below) { return random_() % below; }
  // Short texts from few characters, so that matches are common: at both ends of a row, across the
  // border of two, and of every length.
  std::string Text(size_t length, size_t choice) {
    std::string text;
    while (text.size() < length) text += kLetters[Number(choice)];
    return text;
  }

  static constexpr size_t kAscii = 5;
  // Among them: lower case is shorter (U+0130, U+1E9E, U+212A) or longer (U+023A), a combining
  // mark, a character of four bytes, and bytes that are no UTF-8.
  const std::vector<const char*> kLetters = {
      "a",      "A",      "b",      " ", "@",      "\u00C4",     "\u00E4", "\u0130", "i",
      "\u1E9E", "\u00DF", "\u212A", "k", "\u023A", "\U00010400", "\u0301", "\xC3",   "\x80"};
  std::mt19937 random_{14};
};

std::vector<const ByteKernels*> AvailableKernels() {
  std::vector<const ByteKernels*> all;
  for (auto kernels = AllKernels(); *kernels != nullptr; ++kernels) all.push_back(*kernels);
  return all;
}

INSTANTIATE_TEST_SUITE_P(Kernels, KernelsTest, testing::ValuesIn(AvailableKernels()),
                         [](const auto& kernels) { return std::string(kernels.param->name); });

std::vector<std::uint32_t> SlowSearch(const MailList& list, std::string_view wanted) {
  std::vector<std::uint32_t> found;
  for (size_t row = 0; row < list.Size(); ++row) {
    if (LowerCase(list.Title(row)).find(wanted) != std::string::npos) {
      found.push_back(static_cast<std::uint32_t>(row));
    }
  }
  return found;
}

TEST_P(KernelsTest, LowerCasesLikeLowerCaseAtEveryAlignment) {
  const auto lowered = [](std::string_view title) {
    FlatArray<char> lower;
    lower.PushBack('X');
    AppendLowerCase(title, lower);
    return std::string(lower.Data(), lower.Size());
  };
  for (size_t begin = 0; begin < 40; ++begin) {
    for (size_t size = 0; size < 140; size += 1 + size / 40) {
      std::string text(begin + size, '\0');
      for (char& c : text) c = static_cast<char>(Number(128));
      if (size > 0 && Number(2) == 0) text[begin + Number(size)] = '\x80';  // noticed anywhere
      const std::string piece = text.substr(begin);
      std::string lower(begin + size + 1, '#');
      const bool ascii = Kernels().lowerAscii(text.data() + begin, lower.data() + begin, size);
      ASSERT_EQ(ascii, IsAscii(piece));
      ASSERT_EQ(Kernels().isAscii(text.data() + begin, size), ascii);
      ASSERT_EQ(lower.back(), '#');
      if (ascii) {
        ASSERT_EQ(lower.substr(begin, size), LowerCase(piece));
      }
    }
  }
  for (int round = 0; round < 3000; ++round) {
    const std::string title = Text(Number(70), kLetters.size());
    ASSERT_EQ(lowered(title), "X" + LowerCase(title));
  }
  std::string every;
  for (unsigned c = 0; c < 0xD800; ++c) {
    every += Utf8FromUtf16(std::string{static_cast<char>(c >> 8U), static_cast<char>(c)},
                           ByteOrder::kBigEndian);
  }
  EXPECT_EQ(lowered(every), "X" + LowerCase(every));
}

TEST_P(KernelsTest, MasksMarkTheBytesAskedFor) {
  constexpr size_t kMasks = 3;
  constexpr size_t kBytes = kMasks * kMaskBytes;
  std::vector<std::uint64_t> mask(kMasks);
  const auto marked = [&mask](size_t i) {
    return (mask[i / kMaskBytes] >> (i % kMaskBytes) & 1U) != 0;
  };
  for (size_t begin = 0; begin < 70; ++begin) {
    const size_t reach = Number(90);
    std::string text(begin + kBytes + reach, '\0');
    // Bytes that differ from the wanted ones in one bit or by one are the ones to get wrong.
    for (char& c : text) {
      c = Number(2) == 0 ? "\n\r\x0B\x0C\x0E\x8A\x8D\x09 ab"[Number(11)]
                         : static_cast<char>(Number(256));
    }
    const char* here = text.data() + begin;
    Kernels().lineEnds(here, mask.data(), kMasks);
    for (size_t i = 0; i < kBytes; ++i) {
      ASSERT_EQ(marked(i), here[i] == '\n' || here[i] == '\r') << begin << " " << i;
    }
    for (const char wanted : {'a', '\x8A', '\xFE'}) {
      bool expected = false;
      const bool any = Kernels().pairs(here, 'a', here + reach, wanted, mask.data(), kMasks);
      for (size_t i = 0; i < kBytes; ++i) {
        ASSERT_EQ(marked(i), here[i] == 'a' && here[i + reach] == wanted) << begin << " " << i;
        expected = expected || marked(i);
      }
      ASSERT_EQ(any, expected);
    }
  }
}

TEST_P(KernelsTest, SweepAgreesWithLookingAtEveryRow) {
  size_t matches = 0;
  for (size_t length = 1; length <= 80; ++length) {
    for (const size_t choice : {kAscii, kLetters.size()}) {
      MailList list;
      std::string all;
      for (size_t left = 1 + Number(120); left > 0; --left) {
        const std::string title = Text(Number(2 * length + 8), choice);
        list.Append("1", title);
        all += LowerCase(title);
      }
      for (int round = 0; round < 6 && all.size() >= length; ++round) {
        // Cut from the rows laid end to end: many of these texts are at a border or across one.
        const std::string wanted = all.substr(Number(all.size() - length + 1), length);
        const auto expected = SlowSearch(list, wanted);
        ASSERT_EQ(RowNumbersWithTitle(list, wanted), expected) << wanted;
        matches += expected.size();
        // Some of the rows, from nearly all to a few, are searched apart.
        std::vector<std::uint32_t> some;
        const size_t step = 1 + Number(20);
        for (size_t row = Number(2); row < list.Size(); row += step) {
          some.push_back(static_cast<std::uint32_t>(row));
        }
        MailList part;
        part.ShowRowsOf(list, some);
        ASSERT_EQ(RowNumbersWithTitle(part, wanted), SlowSearch(part, wanted)) << wanted;
      }
    }
  }
  EXPECT_GT(matches, 500U);
}

TEST_P(KernelsTest, SweepCrossesItsOwnStretches) {
  // Hits in long titles, at every place around the 64 bytes of a mask and the 16 KiB of a stretch.
  for (const size_t place : {0U, 1U, 62U, 63U, 64U, 65U, 16383U, 16384U, 16385U, 40000U}) {
    for (const size_t length : {1U, 2U, 7U, 8U, 9U, 33U, 80U}) {
      const std::string title(place, '.');
      const std::string wanted = "q" + std::string(length - 1, 'z');
      MailList list;
      list.Append("1", title + wanted.substr(0, length / 2));
      list.Append("2", wanted.substr(length / 2));
      list.Append("3", title + UpperCase(wanted));
      list.Append("4", "");
      EXPECT_EQ(RowNumbersWithTitle(list, wanted), SlowSearch(list, wanted)) << place;
      EXPECT_TRUE(RowsWithTitle(list, wanted).Contains(2));
    }
  }
}

}  // namespace
}  // namespace brindle
