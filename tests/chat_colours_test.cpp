#include "irc/chat_colours.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/fake_views.h"

namespace brindle {
namespace {

using std::string_literals::operator""s;
using Runs = std::vector<ColouredRun>;

constexpr Colour kGrey{1, 2, 3};  // a background that no text has
constexpr Colour kUsers{9, 9, 9};
constexpr Colour kOrange{255, 125, 0};
constexpr Colour kRed{255, 0, 0};
constexpr Colour kOlive{128, 128, 0};
constexpr Colour kGreen{0, 128, 0};

Runs On(Colour background, std::string_view text) { return ColouredRuns(text, background, kUsers); }

TEST(ChatColours, MapsEveryColourNumber) {
  const Colour expected[] = {{255, 255, 255}, {0, 0, 0},     {0, 0, 128},     {0, 128, 0},
                             {255, 0, 0},     {128, 0, 0},   {128, 0, 128},   {128, 128, 0},
                             {255, 255, 0},   {0, 255, 0},   {0, 128, 128},   {0, 255, 255},
                             {0, 0, 255},     {255, 0, 255}, {128, 128, 128}, {192, 192, 192}};
  for (int number = 0; number <= 99; ++number) {
    Colour colour = number == 99 ? kBlack : expected[number % 16];
    EXPECT_EQ(BasicColour(IrcColorToBasic(number)), colour) << number;
    if (number == 7) colour = kOrange;
    EXPECT_EQ(On(kGrey, "\003" + std::to_string(number) + "x"), (Runs{{colour, "x"}})) << number;
  }
  EXPECT_EQ(IrcColorToBasic(-1), 0);
  EXPECT_EQ(IrcColorToBasic(1000), 0);
}

TEST(ChatColours, CutsTextIntoColouredRuns) {
  const struct {
    std::string text;
    Runs runs;
  } table[] = {
      {"", {}},
      {"plain", {{kBlack, "plain"}}},
      {"kept \017 mark", {{kBlack, "kept \017 mark"}}},
      {"\0034Hello", {{kRed, "Hello"}}},
      {"\r\n\0034a\0033b\017c", {{kBlack, "\r\n"}, {kRed, "a"}, {kGreen, "bc"}}},
      {"\00307x", {{kOrange, "x"}}},
      {"\00323x", {{kOlive, "x"}}},
      {"\0034,1x", {{kRed, "x"}}},
      {"\0034,12x", {{kRed, "x"}}},
      {"\00304,123", {{kRed, "3"}}},
      {"\0034,x", {{kRed, ",x"}}},
      {"\0034,", {{kRed, ","}}},
      {"\0034, 1", {{kRed, ", 1"}}},
      {"\0034,1,2x", {{kRed, ",2x"}}},
      {"\0034,1-x", {{kRed, "-x"}}},
      {"\0034-nick-", {{kRed, "-nick-"}}},
      {"\0034 x", {{kRed, " x"}}},
      {"\003123", {{{0, 0, 255}, "3"}}},
      {"\003nick", {{kBlack, "nick"}}},
      {"\003\0034x\003", {{kRed, "x"}}},
      {"\003 ,x", {{kBlack, " ,x"}}},
      {"\0034\u00E9", {{kRed, "\u00E9"}}},
      {"\003\u00E94", {{kBlack, "\u00E94"}}},
      // The beginning of a coloured text is a piece like the others: its digits are a colour.
      {"12 mails\0034x", {{{0, 0, 255}, " mails"}, {kRed, "x"}}},
  };
  for (const auto& row : table) {
    EXPECT_EQ(On(kGrey, row.text), row.runs) << testing::PrintToString(row.text);
  }
}

TEST(ChatColours, UsesTheRoomColourForTextThatCouldNotBeRead) {
  const struct {
    Colour background;
    std::string text;
    Runs runs;
  } table[] = {
      {kWhite, "\0030white", {{kUsers, "white"}}},
      {kWhite, "\0031black", {{kBlack, "black"}}},
      {kBlack, "\r\n\0034x", {{kUsers, "\r\n"}, {kRed, "x"}}},
      {kBlack, "\00399x", {{kUsers, "x"}}},
      {kBlack, "plain", {{kBlack, "plain"}}},
      {kOrange, "\0037x\00323x", {{kUsers, "x"}, {kOlive, "x"}}},
  };
  for (const auto& row : table) EXPECT_EQ(On(row.background, row.text), row.runs) << row.text;
}

TEST(ChatColours, LetsNothingButCrLfBreakALine) {
  const struct {
    std::string text;
    std::string shown;
  } table[] = {
      {"\r\na\rb\nc\vd\fe", "\r\na b c d e"},
      {"a\n\rb\r\r\nc", "a  b \r\nc"},
      {"a\u2028b\u2029c\u0085d", "a b c d"},
      {"a\0b\uFDD0c\uFDD1d\uFDD2"s, "abcd\uFDD2"},
      {"a\r\0\nb"s, "a  b"},
      {"\0034a\r\017\nb", "a  b"},
      {"\0034a\r\003\nb", "a  b"},
  };
  for (const auto& row : table) {
    std::string shown;
    for (const ColouredRun& run : On(kGrey, row.text)) shown += run.text;
    EXPECT_EQ(shown, row.shown) << testing::PrintToString(row.text);
  }
}

TEST(ChatColours, WritesIntoTheViewItIsTold) {
  FakeChatView status;
  FakeChatView room;
  Options options;
  options.roomBackcolor = kRed;
  options.roomForecolor = kUsers;
  ChatColours display(status, room, options);
  display.Color_Response("\0034a", ChatTarget::kStatus);
  display.Color_Response("\0033b", ChatTarget::kRoom);
  display.Insert("\r\n\0034c\rd", kRed, ChatTarget::kStatus);
  EXPECT_EQ(status.runs, (Runs{{kUsers, "a"}, {kRed, "\r\n\0034c d"}}));
  EXPECT_EQ(room.runs, (Runs{{kGreen, "b"}}));
  EXPECT_EQ(display.RoomTextLength(), 1U);
}

TEST(ChatColours, SurvivesThousandsOfCodes) {
  std::string text;
  for (int i = 0; i < 50000; ++i) text += "\0034,";
  EXPECT_EQ(On(kGrey, text).size(), 50000U);
  EXPECT_EQ(On(kGrey, std::string(100000, '\003')), Runs{});
}

}  // namespace
}  // namespace brindle
