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

const Roles kGrounds = {&L::surface, &L::base, &L::alternate, &L::raised};
// What is drawn on which grounds, and the least contrast.
const std::tuple<Roles, Roles, double> kUses[] = {
    {{&L::text, &L::dim, &L::link, &L::good, &L::warning, &L::bad}, kGrounds, 4.5},
    {{&L::text, &L::bad}, {&L::hover, &L::pressed}, 4.5},
    {{&L::selectionText, &L::dim}, {&L::selection}, 4.5},
    {{&L::accentText}, {&L::accentFill}, 4.5},
    {{&L::outline, &L::accent, &L::accentFill}, kGrounds, 3},
};

std::string Name(Colour colour) { return ToQColor(colour).name().toStdString(); }

TEST(Look, EveryRoleStandsOutWhereItIsUsed) {
  for (const auto theme : {ThemeChoice::kLight, ThemeChoice::kDark}) {
    SetTheme(theme);
    const L& look = CurrentColours();
    EXPECT_EQ(&look == &DarkColours(), theme == ThemeChoice::kDark);
    for (const auto& [roles, grounds, least] : kUses) {
      for (auto role : roles) {
        for (auto ground : grounds) {
          EXPECT_GE(Contrast(FromQColor(look.*role), FromQColor(look.*ground)), least)
              << Name(FromQColor(look.*role)) << " on " << Name(FromQColor(look.*ground));
        }
      }
    }
  }
  SetTheme(ThemeChoice::kSystem);
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
  const auto has = [letters](char letter) { return letters.find(letter) != std::string::npos; };
  const auto in = [&](auto option) {
    option.rect = image.rect();
    option.direction = has('r') ? Qt::RightToLeft : Qt::LeftToRight;
    option.state.setFlag(QStyle::State_Enabled, !has('x'));
    option.state.setFlag(QStyle::State_HasFocus, has('f') || has('m'));
    option.state.setFlag(QStyle::State_KeyboardFocusChange, has('f'));
    option.state.setFlag(QStyle::State_MouseOver, has('h'));
    option.state.setFlag(QStyle::State_Sunken, has('s'));
    option.state.setFlag(QStyle::State_On, has('o'));
    option.state.setFlag(QStyle::State_NoChange, has('n'));
    option.state.setFlag(QStyle::State_Selected, has('c'));
    return option;
  };
  auto button = in(QStyleOptionButton());
  button.features.setFlag(QStyleOptionButton::Flat, has('F'));
  button.features.setFlag(QStyleOptionButton::DefaultButton, has('D'));
  button.features.setFlag(QStyleOptionButton::HasMenu, has('M'));
  button.text = has('T') ? "" : "Text";
  button.iconSize = {16, 16};
  QPixmap dots(button.iconSize);
  dots.fill(Qt::red);
  if (has('I')) button.icon = dots;
  auto field = in(QStyleOptionFrame());
  field.lineWidth = has('F') ? 0 : 1;
  auto tab = in(QStyleOptionTab());
  tab.shape = has('L') ? QTabBar::RoundedWest : has('B') ? QTabBar::RoundedSouth : tab.shape;
  auto item = in(QStyleOptionMenuItem());
  item.text = has('K') ? "Item\tKey" : "Item";
  if (has('S')) item.menuItemType = QStyleOptionMenuItem::Separator;
  if (has('U')) item.menuItemType = QStyleOptionMenuItem::SubMenu;
  item.menuHasCheckableItems = has('C') || has('I');
  if (has('C')) item.checkType = QStyleOptionMenuItem::NonExclusive;
  item.checked = has('o');
  item.icon = button.icon;
  auto bar = in(QStyleOptionProgressBar());
  bar.maximum = 100;
  bar.progress = has('1') ? 50 : has('2') ? 100 : 0;
  bar.textVisible = has('T');
  bar.text = "50%";
  auto combo = in(QStyleOptionComboBox());
  combo.frame = !has('F');

  const QStyle& style = *QApplication::style();
  using S = QStyle;
  if (control == "button") style.drawControl(S::CE_PushButton, &button, &painter);
  if (control == "check") style.drawPrimitive(S::PE_IndicatorCheckBox, &button, &painter);
  if (control == "radio") style.drawPrimitive(S::PE_IndicatorRadioButton, &button, &painter);
  if (control == "field") style.drawPrimitive(S::PE_PanelLineEdit, &field, &painter);
  if (control == "tab") style.drawControl(S::CE_TabBarTabShape, &tab, &painter);
  if (control == "menu") style.drawControl(S::CE_MenuItem, &item, &painter);
  if (control == "combo") style.drawComplexControl(S::CC_ComboBox, &combo, &painter);
  if (control == "progress") style.drawControl(S::CE_ProgressBar, &bar, &painter);
  return image;
}

TEST(Look, StatesThatMatterDoNotLookAlike) {
  // States are words of letters, "-" is none; those with "=" between them look the same.
  const std::pair<const char*, const char*> table[] = {
      {"button", "-=m s=o f h x=hx=Dx F Fs Fh D Ds Df Dh M=Mm MD Mx Mr I=Im ID Ix Ir TI TID TD FT"},
      {"check", "- h x=hx o=ho ox n nx"},
      {"radio", "- h x o ox"},
      {"field", "- f=m h x=fx F"},
      {"combo", "- f=m h x=fx F"},
      {"tab", "-=f=m c=cm cf cL=crL cB"},
      {"menu", "-=o c x=cx K=Ko Kc Kx Kr r S=Sc U Ur Uc C Co Cox I Ic"},
      {"progress", "- 1 2 1r T T1 Tx T1x"},
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

TEST(Look, WhatIsThereIsDrawnAndWhatHasTheKeyboardIsFramed) {
  const auto ink = [](const char* control, const char* letters, bool frame) {
    const QImage picture = Picture(control, letters);
    int pixels = 0;
    for (int i = 0; i < picture.width() * picture.height(); ++i) {
      const QColor pixel = picture.pixelColor(i % picture.width(), i / picture.width());
      pixels += pixel.alpha() > 0 && (!frame || pixel == CurrentColours().accent) ? 1 : 0;
    }
    return pixels;
  };
  const char* const table[][3] = {
      {"menu", "", "U"},       {"menu", "", "K"},     {"menu", "C", "Co"}, {"menu", "", "I"},
      {"button", "FT", "FTI"}, {"button", "F", "FM"}, {"button", "", "f"}, {"field", "", "f"}};
  for (const auto& [control, less, more] : table) {
    const bool frame = more == std::string_view("f");
    EXPECT_LT(ink(control, less, frame), ink(control, more, frame)) << control << more;
  }
}

TEST(Look, AScrollBarShowsWhatPartIsInSight) {
  // Of 200 pixels: how many of 100 steps are in sight besides, and where.
  const std::tuple<int, int, int, int> table[] = {
      {100, 0, 0, 100}, {100, 100, 100, 200}, {300, 50, 25, 175}, {300, 100, 50, 200}};
  QStyleOptionSlider bar;
  bar.rect = {0, 0, 10, 200};
  bar.orientation = Qt::Vertical;
  bar.maximum = 100;
  for (const auto& [page, position, from, to] : table) {
    bar.pageStep = page;
    bar.sliderPosition = position;
    EXPECT_EQ(QApplication::style()->subControlRect(QStyle::CC_ScrollBar, &bar,
                                                    QStyle::SC_ScrollBarSlider),
              QRect(0, from, 10, to - from));
  }
}

TEST(Look, ACheckedBoxHasItsTick) {
  const QImage picture = Picture("check", "o");
  bool isDrawn = false;
  for (int x = 0; x < picture.width(); ++x)
    isDrawn |= picture.pixelColor(x, 18).rgb() == CurrentColours().accentText.rgb();
  EXPECT_TRUE(isDrawn);
}

}  // namespace
}  // namespace brindle
