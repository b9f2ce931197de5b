#include "mail/byte_kernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "base/encoding.h"
#include "base/text.h"
#include "mail/lower_titles.h"
#include "mail/text_sweep.h"
#include "mail/title_search.h"
#include "support/memory_source.h"

namespace brindle {
namespace {

// Runs every test with each form of the kernels that this machine has.
class KernelsTest : public testing::TestWithParam<const ByteKernels*> {
 protected:
  void SetUp() override { UseKernels(GetParam()); }
  void TearDown() override { UseKernels(nullptr); }
};

std::vector<const ByteKernels*> AvailableKernels() {
  std::vector<const ByteKernels*> all;
  for (const ByteKernels* const* kernels = AllKernels(); *kernels != nullptr; ++kernels) {
    all.push_back(*kernels);
  }
  return all;
}

INSTANTIATE_TEST_SUITE_P(Kernels, KernelsTest, testing::ValuesIn(AvailableKernels()),
                         [](const auto& kernels) { return std::string(kernels.param->name); });

std::string RandomBytes(std::mt19937& random, size_t size, unsigned highest) {
  std::string bytes(size, '\0');
  for (char& c : bytes) c = static_cast<char>(random() % (highest + 1));
  return bytes;
}

TEST_P(KernelsTest, LowerCasesAtEveryAlignmentAndLength) {
  std::mt19937 random(11);
  for (size_t begin = 0; begin < 40; ++begin) {
    for (size_t size = 0; size < 140; size += 1 + size / 40) {
      for (const unsigned highest : {0x7FU, 0xFFU}) {
        const std::string text = RandomBytes(random, begin + size, highest);
        const std::string piece = text.substr(begin);
        std::string lower(begin + size + 1, '#');
        const bool ascii = Kernels().lowerAscii(text.data() + begin, lower.data() + begin, size);
        ASSERT_EQ(ascii, IsAscii(piece));
        ASSERT_EQ(Kernels().isAscii(text.data() + begin, size), IsAscii(piece));
        ASSERT_EQ(lower.back(), '#');
        if (ascii) {
          ASSERT_EQ(lower.substr(begin, size), LowerCase(piece));
        }
      }
    }
  }
  // One byte beyond ASCII anywhere is noticed.
  for (size_t at = 0; at < 100; ++at) {
    std::string text(100, 'A');
    text[at] = '\x80';
    std::string lower(100, ' ');
    EXPECT_FALSE(Kernels().isAscii(text.data(), text.size())) << at;
    EXPECT_FALSE(Kernels().lowerAscii(text.data(), lower.data(), text.size())) << at;
  }
}

TEST_P(KernelsTest, MasksMarkTheBytesAskedFor) {
  std::mt19937 random(12);
  const auto bit = [](const std::vector<std::uint64_t>& mask, size_t i) {
    return (mask[i / kMaskBytes] >> (i % kMaskBytes) & 1U) != 0;
  };
  for (size_t begin = 0; begin < 70; ++begin) {
    constexpr size_t kMasks = 3;
    constexpr size_t kBytes = kMasks * kMaskBytes;
    const size_t reach = random() % 90;
    std::string text = RandomBytes(random, begin + kBytes + reach, 0xFF);
    // Bytes that differ from the wanted ones in one bit or by one are the ones to get wrong.
    for (char& c : text) {
      if (random() % 2 == 0) c = "\n\r\x0B\x0C\x0E\x8A\x8D\x09 ab"[random() % 11];
    }
    const char* here = text.data() + begin;
    std::vector<std::uint64_t> mask(kMasks);
    Kernels().lineEnds(here, mask.data(), kMasks);
    for (size_t i = 0; i < kBytes; ++i) {
      ASSERT_EQ(bit(mask, i), here[i] == '\n' || here[i] == '\r') << begin << " " << i;
    }
    for (const char wanted : {'a', '\x8A', '\xFE'}) {
      const bool any = Kernels().pairs(here, 'a', here + reach, wanted, mask.data(), kMasks);
      bool expected = false;
      for (size_t i = 0; i < kBytes; ++i) {
        const bool pair = here[i] == 'a' && here[i + reach] == wanted;
        ASSERT_EQ(bit(mask, i), pair) << begin << " " << i;
        expected = expected || pair;
      }
      ASSERT_EQ(any, expected);
    }
  }
}

// Short texts from few characters, so that matches are common: at both ends of a row, across the
// border of two, and of every length.
class Letters {
 public:
  explicit Letters(unsigned seed) : random_(seed) {}

  size_t Number(size_t below) { return random_() % below; }

  std::string Text(size_t length, size_t choice) {
    std::string text;
    while (text.size() < length) text += kLetters[random_() % choice];
    return text;
  }

  static constexpr size_t kAscii = 5;
  static constexpr size_t kAll = 18;

 private:
  // Among them: lower case is shorter (U+0130, U+1E9E, U+212A) or longer (U+023A), a combining
  // mark, a character of four bytes, and bytes that are no UTF-8.
  static constexpr const char* kLetters[kAll] = {
      "a",      "A",      "b",      " ", "@",      "\u00C4",     "\u00E4", "\u0130", "i",
      "\u1E9E", "\u00DF", "\u212A", "k", "\u023A", "\U00010400", "\u0301", "\xC3",   "\x80"};
  std::mt19937 random_;
};

std::vector<std::uint32_t> SlowSearch(const MailList& list, std::string_view wanted) {
  std::vector<std::uint32_t> found;
  for (size_t row = 0; row < list.Size(); ++row) {
    if (LowerCase(list.Title(row)).find(wanted) != std::string::npos) {
      found.push_back(static_cast<std::uint32_t>(row));
    }
  }
  return found;
}

TEST_P(KernelsTest, LowerCasesLikeLowerCase) {
  Letters letters(13);
  for (int round = 0; round < 3000; ++round) {
    const std::string title = letters.Text(letters.Number(70), Letters::kAll);
    FlatArray<char> lower;
    lower.PushBack('X');
    AppendLowerCase(title, lower);
    ASSERT_EQ(std::string_view(lower.Data(), lower.Size()), "X" + LowerCase(title));
  }
  std::string every;
  for (unsigned c = 0; c < 0x3000; ++c) {
    const std::string utf16 = {static_cast<char>(c >> 8U), static_cast<char>(c & 0xFFU)};
    every += Utf8FromUtf16(utf16, ByteOrder::kBigEndian);
  }
  FlatArray<char> lower;
  AppendLowerCase(every, lower);
  EXPECT_EQ(std::string_view(lower.Data(), lower.Size()), LowerCase(every));
}

TEST_P(KernelsTest, SweepAgreesWithLookingAtEveryRow) {
  Letters letters(14);
  size_t matches = 0;
  size_t rounds = 0;
  for (size_t length = 1; length <= 80; ++length) {
    for (const size_t choice : {Letters::kAscii, Letters::kAll}) {
      MailList list;
      const size_t rows = 1 + letters.Number(120);
      std::string all;
      for (size_t row = 0; row < rows; ++row) {
        const std::string title = letters.Text(letters.Number(2 * length + 8), choice);
        list.Append("1", title);
        all += LowerCase(title);
      }
      for (int round = 0; round < 6; ++round) {
        // Cut from the rows laid end to end: many of these texts are at a border or across one.
        if (all.size() < length) continue;
        const std::string wanted = all.substr(letters.Number(all.size() - length + 1), length);
        const auto expected = SlowSearch(list, wanted);
        ASSERT_EQ(RowNumbersWithTitle(list, wanted), expected) << wanted;
        matches += expected.size();
        ++rounds;
      }
    }
  }
  EXPECT_GT(rounds, 900U);
  EXPECT_GT(matches, rounds);
}

TEST_P(KernelsTest, SweepCrossesItsOwnStretches) {
  // Hits in long titles, at every place around the 64 bytes of a mask and the 16 KiB of a stretch.
  for (const size_t place : {0U, 1U, 62U, 63U, 64U, 65U, 16383U, 16384U, 16385U, 40000U}) {
    for (const size_t length : {1U, 2U, 7U, 8U, 9U, 33U, 80U}) {
      std::string title(place, '.');
      const std::string wanted = "q" + std::string(length - 1, 'z');
      MailList list;
      list.Append("1", title + wanted.substr(0, length / 2));
      list.Append("2", wanted.substr(length / 2));
      list.Append("3", title + "Q" + std::string(length - 1, 'Z'));
      list.Append("4", "");
      EXPECT_EQ(RowNumbersWithTitle(list, wanted), SlowSearch(list, wanted)) << place;
      EXPECT_TRUE(RowsWithTitle(list, wanted).Contains(2));
    }
  }
}

TEST_P(KernelsTest, ReadsListsInBlocksOfAnySize) {
  // The reader's own tests run on the best kernels only.
  Letters letters(15);
  for (int round = 0; round < 60; ++round) {
    std::string file;
    std::vector<std::string> titles;
    for (size_t row = 0; row < 50; ++row) {
      titles.push_back("x" + letters.Text(letters.Number(90), Letters::kAscii) + "x");
      const char* const ends[] = {"\n", "\r\n", "\r"};
      file += std::to_string(row) + ". " + titles.back() + ends[letters.Number(3)];
    }
    MemorySource source(file, 1 + letters.Number(300));
    MailList list;
    ASSERT_EQ(ReadList(source, list, {}).status, ReadStatus::kComplete);
    ASSERT_EQ(list.Size(), titles.size());
    for (size_t row = 0; row < titles.size(); ++row) {
      ASSERT_EQ(list.Number(row), std::to_string(row));
      ASSERT_EQ(list.Title(row), titles[row]);
    }
    ASSERT_EQ(RowNumbersWithTitle(list, "ab"), SlowSearch(list, "ab"));
  }
}

}  // namespace
}  // namespace brindle
