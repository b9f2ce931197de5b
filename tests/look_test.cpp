// Both palettes and the shifted colours of chat text, measured: what is written can be read.

#include "ui/look.h"

#include <gtest/gtest.h>

#include "irc/chat_colours.h"
#include "ui/qt_text.h"
#include "ui/readable_colour.h"

namespace brindle {
namespace {

using L = LookColours;
using Roles = std::vector<QColor L::*>;

struct Use {
  Roles roles;
  Roles grounds;
  double least;
};

const Roles kGrounds = {&L::surface, &L::base, &L::alternate, &L::raised};
const Use kUses[] = {
    {{&L::text, &L::dim, &L::link, &L::good, &L::warning, &L::bad}, kGrounds, 4.5},
    {{&L::text, &L::bad}, {&L::hover, &L::pressed}, 4.5},
    {{&L::selectionText, &L::dim}, {&L::selection}, 4.5},
    {{&L::accentText}, {&L::accentFill}, 4.5},
    {{&L::outline, &L::accent, &L::accentFill}, kGrounds, 3},
};

std::string Name(Colour colour) { return ToQColor(colour).name().toStdString(); }

TEST(Look, EveryRoleStandsOutWhereItIsUsed) {
  for (const L* look : {&LightColours(), &DarkColours()}) {
    for (const Use& use : kUses) {
      for (auto role : use.roles) {
        for (auto ground : use.grounds) {
          EXPECT_GE(Contrast(FromQColor(look->*role), FromQColor(look->*ground)), use.least)
              << Name(FromQColor(look->*role)) << " on " << Name(FromQColor(look->*ground));
        }
      }
    }
  }
}

TEST(Look, ChatColoursBecomeReadableAndKeepTheirHue) {
  std::vector<Colour> texts = {{255, 125, 0}, {70, 10, 90}, {250, 250, 210}, {120, 140, 127}};
  for (int i = 0; i < 16; ++i) texts.push_back(BasicColour(i));
  for (Colour back : {kWhite, FromQColor(DarkColours().base), kPureRed, Colour{119, 119, 119}}) {
    for (Colour text : texts) {
      const Colour shown = ReadableOn(text, back);
      SCOPED_TRACE(Name(text) + " as " + Name(shown) + " on " + Name(back));
      EXPECT_GE(Contrast(shown, back), kReadableContrast);
      EXPECT_TRUE(shown == text || Contrast(text, back) < kReadableContrast);
      const int before = ToQColor(text).hslHue();
      const int after = ToQColor(shown).hslHue();
      if (before < 0 || after < 0) continue;  // grey has none
      // The less colour eight bits hold, the less exact is its hue.
      const auto [least, most] = std::minmax({shown.red, shown.green, shown.blue});
      EXPECT_LE(std::abs((after - before + 540) % 360 - 180), 1 + 60 / (most - least));
    }
  }
}

}  // namespace
}  // namespace brindle
