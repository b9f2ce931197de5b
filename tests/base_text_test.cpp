// Texts, encodings and times.
#include "base/text.h"

#include <gtest/gtest.h>

#include "base/encoding.h"
#include "base/time_text.h"

namespace brindle {
namespace {

using std::string_literals::operator""s;

TEST(Text, KnowsNumbers) {
  for (const char* text : {"007", " 12 ", "-3", "+3", "1.5", ".5", "5."}) {
    EXPECT_TRUE(IsNumericText(text)) << text;
  }
  for (const char* text : {"", ".", "-", "+.", "1 2", "1.2.3", "12a", "--1", "1-", "\t1"}) {
    EXPECT_FALSE(IsNumericText(text)) << text;
  }
}

TEST(Text, ComparesStartsInEitherCase) {
  EXPECT_TRUE(StartsIgnoringCase("AB\u00C4c", "ab\u00E4"));
  EXPECT_FALSE(StartsIgnoringCase("AC", "ab") || StartsIgnoringCase("A", "ab"));
}

TEST(Encoding, ReadsUtf8AndWhateverElseComes) {
  for (const char* good : {"", "plain", "\u00E4", "\u20AC", "\U0001F600", "12345678\u00E4"}) {
    EXPECT_TRUE(IsValidUtf8(good)) << good;
  }
  for (const char* bad : {"\x80", "\xC0\xAF", "\xC3", "\xE0\x80\x80", "\xED\xA0\x80",
                          "\xF5\x80\x80\x80", "\xF0\x8F\xBF\xBF", "12345678\xE2\x82"}) {
    EXPECT_FALSE(IsValidUtf8(bad)) << bad;
  }
  EXPECT_EQ(DecodeReceived("caf\xE9 \x80"), "caf\u00E9 \u20AC");
  EXPECT_EQ(DecodeReceived("caf\u00E9"), "caf\u00E9");
  EXPECT_EQ(Utf8FromUtf16("A\0\x3D\xD8\x00\xDE"s, ByteOrder::kLittleEndian), "A\U0001F600");
  EXPECT_EQ(Utf8FromUtf16("\0A\xD8\x3D\0B"s, ByteOrder::kBigEndian), "A\uFFFDB");
  EXPECT_EQ(Utf8FromUtf16("A\0x"s, ByteOrder::kLittleEndian), "A");
}

TEST(TimeText, LeavesOutLeadingZeros) {
  const std::pair<int, const char*> clocks[] = {
      {0, "12:05am"}, {9, "9:05am"}, {12, "12:05pm"}, {15, "3:05pm"}};
  for (const auto& [hour, text] : clocks) {
    std::tm time{};
    time.tm_hour = hour;
    time.tm_min = 5;
    EXPECT_EQ(ClockText(time), text);
  }
  const auto text = [](int seconds) { return DurationText(seconds, DurationStyle::kAltDhms); };
  EXPECT_EQ(text(-5) + " " + text(59) + " " + text(605), "0s 59s 10m:05s");
  EXPECT_EQ(text(3605) + " " + text(864005), "1h:00m:05s 10d:0h:00m:05s");
  EXPECT_EQ(DurationText(7265, DurationStyle::kMs), "121m:05s");
}

}  // namespace
}  // namespace brindle
