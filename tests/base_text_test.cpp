#include <gtest/gtest.h>

#include <string>

#include "base/encoding.h"
#include "base/text.h"
#include "base/time_text.h"

namespace brindle {
namespace {

TEST(Text, NumericTextAcceptsOnlyDecimalNumbers) {
  for (const char* text : {"1", "007", " 12 ", "-3", "+3", "1.5", ".5", "5.", "0"}) {
    EXPECT_TRUE(IsNumericText(text)) << text;
  }
  for (const char* text : {"", " ", ".", "-", "+.", "1 2", "1.2.3", "12a", "--1", "1-", "\t1"}) {
    EXPECT_FALSE(IsNumericText(text)) << text;
  }
}

TEST(Text, WholeNumberRefusesOverflowAndTails) {
  EXPECT_EQ(WholeNumber(" 6667 ", 1, 65535), 6667);
  for (const char* text :
       {"", "0", "65536", "99999999999999999999999999999999999999999", "6667x"}) {
    EXPECT_FALSE(WholeNumber(text, 1, 65535)) << text;
  }
}

TEST(Text, SplitKeepsEmptyPieces) {
  EXPECT_EQ(Split("", " ").size(), 1U);
  const auto pieces = Split(" a  b", " ");
  ASSERT_EQ(pieces.size(), 4U);
  EXPECT_EQ(JoinFrom(pieces, 1, "+"), "a++b");
  EXPECT_EQ(JoinFrom(pieces, 9, "+"), "");
}

TEST(Text, LowerCaseMapsUnicodeAndKeepsBrokenBytes) {
  EXPECT_EQ(LowerCase("ABC xyz"), "abc xyz");
  EXPECT_EQ(LowerCase("\u00C4\u0416\U00010400"), "\u00E4\u0436\U00010428");
  EXPECT_EQ(LowerCase("A\xFF\xC3"
                      "B"),
            "a\xFF\xC3"
            "b");
  EXPECT_TRUE(EqualsIgnoringCase("\u00C4b", "\u00E4B"));
  EXPECT_FALSE(EqualsIgnoringCase("ab", "abc"));
}

TEST(Encoding, KnowsWellFormedUtf8) {
  for (const char* good : {"", "plain", "\u00E4", "\u20AC", "\U0001F600", "12345678\u00E4"}) {
    EXPECT_TRUE(IsValidUtf8(good)) << good;
  }
  for (const char* bad : {"\x80", "\xC0\xAF", "\xC3", "\xE0\x80\x80", "\xED\xA0\x80",
                          "\xF5\x80\x80\x80", "\xF0\x8F\xBF\xBF", "12345678\xE2\x82"}) {
    EXPECT_FALSE(IsValidUtf8(bad)) << bad;
  }
}

TEST(Encoding, ReadsOtherBytesAsWindows1252) {
  EXPECT_EQ(DecodeReceived("caf\xE9 \x80"), "caf\u00E9 \u20AC");
  EXPECT_EQ(DecodeReceived("caf\u00E9"), "caf\u00E9");
}

TEST(Encoding, ReadsUtf16OfBothOrders) {
  using std::string_literals::operator""s;
  EXPECT_EQ(Utf8FromUtf16("A\0\x3D\xD8\x00\xDE"s, ByteOrder::kLittleEndian), "A\U0001F600");
  EXPECT_EQ(Utf8FromUtf16("\0A\xD8\x3D\0B"s, ByteOrder::kBigEndian), "A\uFFFDB");
  EXPECT_EQ(Utf8FromUtf16("A\0x"s, ByteOrder::kLittleEndian), "A");
}

TEST(TimeText, ClockHasNoLeadingZeroInTheHour) {
  std::tm time{};
  const struct {
    int hour, minute;
    const char* text;
  } cases[] = {{0, 5, "12:05am"}, {9, 0, "9:00am"}, {12, 59, "12:59pm"}, {15, 7, "3:07pm"}};
  for (const auto& c : cases) {
    time.tm_hour = c.hour;
    time.tm_min = c.minute;
    EXPECT_EQ(ClockText(time), c.text);
  }
}

TEST(TimeText, DurationsLeaveOutLeadingZeroPieces) {
  EXPECT_EQ(DurationText(-5, DurationStyle::kAltDhms), "0s");
  EXPECT_EQ(DurationText(59, DurationStyle::kAltDhms), "59s");
  EXPECT_EQ(DurationText(3605, DurationStyle::kAltDhms), "1h:00m:05s");
  EXPECT_EQ(DurationText(90061, DurationStyle::kAltDhms), "1d:1h:01m:01s");
  EXPECT_EQ(DurationText(86400, DurationStyle::kAltDhms), "1d:0h:00m:00s");
  EXPECT_EQ(DurationText(50, DurationStyle::kMs), "50s");
  EXPECT_EQ(DurationText(7265, DurationStyle::kMs), "121m:05s");
}

}  // namespace
}  // namespace brindle
