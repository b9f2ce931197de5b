#include "irc/chat_colours.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brindle {
namespace {

using std::string_literals::operator""s;

constexpr Colour kGrey{1, 2, 3};  // a background that no text has
constexpr Colour kOrange{255, 125, 0};

// The runs of `text`, each with the letter of its colour in front; [u] is the user's room colour.
std::string Painted(const std::string& text, Colour background = kGrey, bool apart = false) {
  const std::pair<Colour, const char*> letters[] = {
      {kBlack, "[k]"},      {{255, 0, 0}, "[r]"},   {{0, 128, 0}, "[g]"}, {{0, 0, 255}, "[b]"},
      {{128, 0, 0}, "[m]"}, {{128, 128, 0}, "[o]"}, {{9, 9, 9}, "[u]"},   {kOrange, "[7]"}};
  Options options;
  options.roomBackcolor = background;
  options.roomForecolor = {9, 9, 9};
  options.keepDigitsApart = apart;
  std::string painted;
  for (const ColouredRun& run : ColouredRuns(text, options)) {
    for (const auto& [colour, letter] : letters) painted += colour == run.colour ? letter : "";
    painted += run.text;
  }
  return painted;
}

TEST(ChatColours, MapsEveryColourNumber) {
  const Colour expected[] = {{255, 255, 255}, {0, 0, 0},     {0, 0, 128},     {0, 128, 0},
                             {255, 0, 0},     {128, 0, 0},   {128, 0, 128},   {128, 128, 0},
                             {255, 255, 0},   {0, 255, 0},   {0, 128, 128},   {0, 255, 255},
                             {0, 0, 255},     {255, 0, 255}, {128, 128, 128}, {192, 192, 192}};
  for (int number = -1; number <= 120; ++number) {
    const Colour colour = number < 0 || number > 98 ? kBlack : expected[number % 16];
    EXPECT_EQ(BasicColour(IrcColorToBasic(number)), colour) << number;
    if (number < 0 || number > 99) continue;
    const std::vector<ColouredRun> run = {{number == 7 ? kOrange : colour, "x"}};
    EXPECT_EQ(ColouredRuns("\003" + std::to_string(number) + "x", Options{.roomBackcolor = kGrey}),
              run);
  }
}

TEST(ChatColours, CutsTextIntoColouredRuns) {
  std::string printable;
  for (char c = ' '; c <= '~'; ++c) printable += c;
  const struct {
    std::string text;
    std::string runs;
    Colour background = kGrey;
    bool digitsApart = false;
  } table[] = {
      {printable, "[k]" + printable},
      {"\r\n\0034a\0033b\017c", "[k]\r\n[r]a[g]bc"},
      {"\0034,1x\0034,12y\00304,123", "[r]x[r]y[r]3"},
      {"\0034,x\0034,\0034, 1\0034,1,2x", "[r],x[r],[r], 1[r],2x"},
      {"\0034,1-x\0034-nick-\0034 x\0034a1", "[r]-x[r]-nick-[r] x[r]a1"},
      {"\003 ,x\003 3/5\003,55x", "[k] ,x[g] /5[m]x"},
      // The beginning of a coloured text is a piece like the others: its digits are a colour.
      {"12 mails\0034x", "[b] mails[r]x"},
      {std::string(100000, '\003'), ""},
      // Marks without a meaning here are not shown, and may part a colour mark from its number.
      {"\001a\002b\021c\026d\035e\036f\037g\003\0024h\0033\001x", "[k]abcdefg[r]h[g]x"},
      {"\004FF8000a\0040aF9f0,123456b\004123456,12345g", "[k]ab,12345g"},
      {"\00412345g\004\004\0041234567", "[k]12345g7"},
      // Only what is directly behind a colour mark is its number, where the user wants it so.
      {"\00312Slots:\003 3/5 used", "[b]Slots:[k] 3/5 used", kGrey, true},
      {"\003\00212 mails\003\01712\0031\0022\0034\001,5", "[k]12 mails[k]12[k]2[r],5", kGrey, true},
      // Text that could not be read.
      {"\0030white\0031black", "[u]white[k]black", kWhite},
      {"\r\n\0034x\00399y", "[u]\r\n[r]x[u]y", kBlack},
      {"\0037x\00323x", "[u]x[o]x", kOrange},
  };
  for (const auto& row : table) {
    EXPECT_EQ(Painted(row.text, row.background, row.digitsApart), row.runs)
        << testing::PrintToString(row.text.substr(0, 100));
  }
}

TEST(ChatColours, LetsNothingButCrLfBreakALine) {
  const std::string same = "as it is";
  const std::pair<std::vector<std::string>, std::string> table[] = {
      {{"\r", "\n", "\v", "\f", "\u0085", "\u2028", "\u2029"}, " "},
      {{"\0"s, "\uFDD0", "\uFDD1"}, ""},
      {{"\n\r", "\r\0\n"s}, "  "},
      {{"\r\n", "\uFDD2\u0086\u202A", "\t\x0E"}, same},
      {{"\r\r\n"}, " \r\n"},
      {{"\r\017\n"}, " \017 "},
  };
  std::string changed;
  for (const auto& [texts, becomes] : table) {
    for (size_t i = 0; i < texts.size() * 18; ++i) {
      const std::string& text = texts[i / 18];
      const std::string& shown = becomes == same ? text : becomes;
      const std::string before(i % 18, 'a');
      const std::string behind(18 - i % 18, 'b');
      const std::string whole = before + text + behind + text;
      const std::string_view result = ShowableText(whole, changed);
      EXPECT_EQ(result, before + shown + behind + shown) << testing::PrintToString(text) << i % 18;
      EXPECT_EQ(result.data() == whole.data(), text == shown) << "a copy that is not needed";
    }
  }
}

}  // namespace
}  // namespace brindle
