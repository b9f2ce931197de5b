// Both palettes and the shifted colours of chat text, measured: what is written can be read. And
// what controls look like: states that a user must tell apart are not alike.

#include "ui/look.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>

#include "base/text.h"
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

// Draws a control in a state that letters name.
QImage Picture(std::string_view control, std::string_view letters) {
  QImage image(90, 32, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  const QStyle& style = *QApplication::style();
  const auto has = [letters](char letter) { return letters.find(letter) != std::string::npos; };
  const auto set = [&](auto option) {
    using S = QStyle;
    const std::pair<char, S::State> states[] = {
        {'f', S::State_HasFocus | S::State_KeyboardFocusChange},
        {'m', S::State_HasFocus},
        {'h', S::State_MouseOver},
        {'s', S::State_Sunken},
        {'o', S::State_On},
        {'n', S::State_NoChange},
        {'c', S::State_Selected}};
    option.rect = image.rect();
    option.state = has('x') ? S::State_None : S::State_Enabled;
    option.direction = has('r') ? Qt::RightToLeft : Qt::LeftToRight;
    for (const auto& [letter, state] : states) option.state |= has(letter) ? state : S::State_None;
    return option;
  };
  QPixmap dots(16, 16);
  dots.fill(Qt::red);
  if (control == "button") {
    auto button = set(QStyleOptionButton());
    using Button = QStyleOptionButton;
    for (const auto& [letter, feature] :
         {std::pair{'F', Button::Flat}, {'D', Button::DefaultButton}, {'M', Button::HasMenu}}) {
      button.features.setFlag(feature, has(letter));
    }
    if (!has('T')) button.text = "Text";
    if (has('I')) button.icon = dots;
    button.iconSize = dots.size();
    style.drawControl(QStyle::CE_PushButton, &button, &painter);
  } else if (control == "check" || control == "radio") {
    const auto mark = set(QStyleOptionButton());
    style.drawPrimitive(
        control == "check" ? QStyle::PE_IndicatorCheckBox : QStyle::PE_IndicatorRadioButton, &mark,
        &painter);
  } else if (control == "field") {
    auto field = set(QStyleOptionFrame());
    field.lineWidth = has('F') ? 0 : 1;
    style.drawPrimitive(QStyle::PE_PanelLineEdit, &field, &painter);
  } else if (control == "tab") {
    auto tab = set(QStyleOptionTab());
    tab.shape = has('L') ? QTabBar::RoundedWest : has('B') ? QTabBar::RoundedSouth : tab.shape;
    style.drawControl(QStyle::CE_TabBarTabShape, &tab, &painter);
  } else if (control == "menu") {
    auto item = set(QStyleOptionMenuItem());
    item.text = has('K') ? "Item\tKey" : "Item";
    item.menuItemType = has('S')   ? QStyleOptionMenuItem::Separator
                        : has('U') ? QStyleOptionMenuItem::SubMenu
                                   : QStyleOptionMenuItem::Normal;
    item.menuHasCheckableItems = has('C') || has('I');
    if (has('C')) item.checkType = QStyleOptionMenuItem::NonExclusive;
    item.checked = has('o');
    if (has('I')) item.icon = dots;
    style.drawControl(QStyle::CE_MenuItem, &item, &painter);
  } else if (control == "progress") {
    auto bar = set(QStyleOptionProgressBar());
    bar.maximum = 100;
    bar.progress = has('1') ? 50 : has('2') ? 100 : 0;
    bar.textVisible = has('T');
    bar.text = "50%";
    style.drawControl(QStyle::CE_ProgressBar, &bar, &painter);
  } else if (control == "combo") {
    auto box = set(QStyleOptionComboBox());
    box.frame = !has('F');
    style.drawComplexControl(QStyle::CC_ComboBox, &box, &painter);
  } else if (control == "scroll") {
    auto bar = set(QStyleOptionSlider());
    bar.maximum = has('1') ? 0 : 100;
    bar.pageStep = 20;
    bar.sliderPosition = has('2') ? 30 : 0;
    bar.orientation = Qt::Horizontal;
    bar.state |= QStyle::State_Horizontal;
    bar.activeSubControls = QStyle::SC_ScrollBarSlider;
    style.drawComplexControl(QStyle::CC_ScrollBar, &bar, &painter);
  }
  return image;
}

TEST(Look, StatesThatMatterDoNotLookAlike) {
  // States are words of letters, "-" is none; those with "=" between them look the same.
  const std::pair<const char*, const char*> table[] = {
      {"button", "-=m s=o f h x=hx=Dx F Fs Fh D Ds Df Dh M=Mm MD Mx Mr I=Im ID Ix Ir TI TID TD FT"},
      {"check", "- h x=hx o=ho ox n nx"},
      {"radio", "- h x o ox"},
      {"field", "- f=m h x=fx F"},
      {"tab", "-=f=m c=cm cf cL=crL cB"},
      {"menu", "-=o c x=cx K=Ko Kc Kx Kr r S=Sc U Ur Uc C Co Cox I Ic"},
      {"progress", "- 1 2 1r T T1 Tx T1x"},
      {"combo", "- f h x r F"},
      {"scroll", "- r h=s=sh 1 2 2r"},
  };
  for (const auto& [control, states] : table) {
    std::vector<QImage> seen;
    for (const std::string_view group : Split(states, " ")) {
      SCOPED_TRACE(control + (" " + std::string(group)));
      const std::vector<std::string_view> alike = Split(group, "=");
      const QImage picture = Picture(control, alike[0]);
      EXPECT_EQ(std::count(seen.begin(), seen.end(), picture), 0);
      for (const std::string_view other : alike)
        EXPECT_EQ(Picture(control, other), picture) << other;
      seen.push_back(picture);
    }
  }
}

}  // namespace
}  // namespace brindle
