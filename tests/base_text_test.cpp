// Texts and times.
#include "base/text.h"

#include <gtest/gtest.h>

#include "base/time_text.h"

namespace brindle {
namespace {

TEST(Text, ReadsWholeNumbersStrictly) {
  for (const char* text : {"", "0", "65536", "99999999999999999999999999999999999", "6667x"}) {
    EXPECT_FALSE(WholeNumber(text, 1, 65535)) << text;
  }
}

TEST(Text, ComparesStartsInEitherCase) {
  EXPECT_TRUE(StartsIgnoringCase("AB\u00C4c", "ab\u00E4"));
  EXPECT_FALSE(StartsIgnoringCase("AC", "ab") || StartsIgnoringCase("A", "ab"));
}

TEST(TimeText, TellsTheHourOfTwelve) {
  const std::pair<int, const char*> clocks[] = {
      {0, "12:05am"}, {9, "9:05am"}, {12, "12:05pm"}, {15, "3:05pm"}};
  for (const auto& [hour, text] : clocks) {
    std::tm time{};
    time.tm_hour = hour;
    time.tm_min = 5;
    EXPECT_EQ(ClockText(time), text);
  }
}

}  // namespace
}  // namespace brindle
