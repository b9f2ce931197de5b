#include "mail/mail_list.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <vector>

#include "base/encoding.h"
#include "base/text.h"
#include "mail/title_search.h"

namespace brindle {
namespace {

class RecordingObserver : public MailListObserver {
 public:
  void RowsAboutToBeReplaced() override { log += "("; }
  void RowsReplaced() override { log += ")"; }
  void CheckChanged(size_t row) override { log += std::to_string(row); }
  void ChecksChanged() override { log += "*"; }
  std::string log;
};

void AppendUtf8(std::string& text, unsigned c) {
  const std::string utf16 = {static_cast<char>(c < 0x10000 ? c >> 8U : 0xD8 | (c - 0x10000) >> 18U),
                             static_cast<char>(c < 0x10000 ? c : (c - 0x10000) >> 10U)};
  const unsigned low = c & 0x3FFU;
  const std::string second = {static_cast<char>(0xDC | low >> 8U), static_cast<char>(low)};
  text += Utf8FromUtf16(c < 0x10000 ? utf16 : utf16 + second, ByteOrder::kBigEndian);
}

void Fill(MailList& list, size_t rows) {
  for (size_t row = 1; row <= rows; ++row) {
    list.Append(std::to_string(row), "Title " + std::to_string(row));
  }
}

TEST(MailList, KeepsTextsOfEveryRow) {
  MailList list;
  list.Append("007", "First");
  list.Append("2", "");
  list.Append("-3", "\u00E9t\u00E9");
  ASSERT_EQ(list.Size(), 3U);
  EXPECT_EQ(list.Number(0), "007");
  EXPECT_EQ(list.Title(1), "");
  EXPECT_EQ(list.Number(2), "-3");
  EXPECT_EQ(list.Title(2), "\u00E9t\u00E9");
  list.Clear();
  EXPECT_EQ(list.Size(), 0U);
  EXPECT_EQ(MailTitleHeader(12, 345), "Mail Title [12/345]");
}

TEST(MailList, TellsTheObserverOncePerChange) {
  MailList list;
  Fill(list, 5);
  RecordingObserver observer;
  list.Observe(&observer);
  list.SetChecked(3, true);
  list.SetChecked(3, true);
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
  MailList other;
  Fill(other, 2);
  other.SetChecked(0, true);
  list.Replace(other);
  EXPECT_NE(list.Generation(), generation);
  EXPECT_EQ(list.Size(), 2U);
  EXPECT_EQ(list.CheckedCount(), 1U);
  EXPECT_EQ(other.Size(), 0U);
  list.Clear();
  EXPECT_EQ(observer.log, "3**1()()");
}

TEST(MailList, KeepsTheCheckedCountThroughAnyChange) {
  std::mt19937 random(1);
  for (const size_t rows : {1U, 63U, 64U, 65U, 200U}) {
    MailList list;
    Fill(list, rows);
    std::set<size_t> model;
    for (int step = 0; step < 300; ++step) {
      const size_t a = random() % rows;
      const size_t b = a + random() % (rows - a);
      switch (random() % 8) {
        case 0:
          list.CheckRange(a, b);
          for (size_t row = a; row <= b; ++row) model.insert(row);
          break;
        case 1: {
          RowSet some(rows);
          some.Set(a, true);
          some.Set(b, true);
          list.CheckRows(some);
          model.insert({a, b});
          break;
        }
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

TEST(TitleSearch, AgreesWithLowerCasingEveryTitle) {
  // Short titles from few characters, so that matches at the ends and across rows are common.
  const std::vector<std::string> letters = {"a", "A",      "b",      "B",      " ",
                                            "@", "`",      "\u00E4", "\u00C4", "\u0130",
                                            "i", "\u212A", "k",      "K",      "\u00A0"};
  std::mt19937 random(2);
  const auto text = [&](size_t most) {
    std::string made;
    for (size_t left = random() % (most + 1); left > 0; --left) {
      made += letters[random() % (random() % 4 == 0 ? letters.size() : 5)];
    }
    return made;
  };
  size_t matches = 0;
  for (int round = 0; round < 400; ++round) {
    MailList list;
    for (size_t row = 0; row < 40; ++row) list.Append("1", text(14));
    const std::string wanted = LowerCase(text(4));
    if (wanted.empty()) continue;
    const RowSet found = RowsWithTitle(list, wanted);
    for (size_t row = 0; row < list.Size(); ++row) {
      const bool expected = LowerCase(list.Title(row)).find(wanted) != std::string::npos;
      ASSERT_EQ(found.Contains(row), expected) << wanted << " in " << list.Title(row);
      matches += expected ? 1U : 0U;
    }
  }
  EXPECT_GT(matches, 1000U);
}

TEST(TitleSearch, KnowsEveryCharacterThatBecomesAscii) {
  size_t known = 0;
  for (unsigned c = 0x80; c < 0x20000; ++c) {
    if (c >= 0xD800 && c < 0xE000) continue;
    std::string character;
    AppendUtf8(character, c);
    const std::string lower = LowerCase(character);
    if (!IsAscii(lower)) continue;
    MailList list;
    list.Append("1", "x" + character + "y");
    EXPECT_EQ(RowsWithTitle(list, lower).Count(), 1U) << c;
    ++known;
  }
  EXPECT_GT(known, 0U);
}

// Checks are given as a text of one character a row, "x" for a checked one.
}  // namespace
}  // namespace brindle
