#pragma once
// How the program looks: two palettes, light and dark, whose colours have names here and nowhere
// else, and the choice between them. What a text role is drawn on keeps a contrast of 4.5 to 1, the
// outline of a control 3 to 1.

#include <QApplication>
#include <QColor>
#include <QPalette>

#include "base/desktop_scheme.h"
#include "settings/options.h"

namespace brindle {

// The colours of one palette.
struct LookColours {
  QColor surface;    // the window
  QColor base;       // lists, chat and fields
  QColor alternate;  // every second row of a list
  QColor raised;     // cards, buttons, menus and tool tips
  QColor hover;      // a button under the mouse
  QColor pressed;
  QColor divider;  // rules and the edges of cards, which tell nothing that their content does not
  QColor outline;  // the edges of controls
  QColor text;
  QColor dim;
  QColor disabled;
  QColor link;
  QColor accent;      // the current tab, the focus
  QColor accentFill;  // the one button that leads on, and what is checked
  QColor accentText;  // on accentFill
  QColor selection;   // behind selected text and rows
  QColor selectionText;
  QColor good;
  QColor warning;
  QColor bad;
};

// Who may choose a colour without knowing the palette: icons and dots.
enum class LookRole { kText, kDim, kAccent, kGood, kWarning, kBad };

// The palette's roles for labels and buttons: label->setForegroundRole(kDimText).
inline constexpr QPalette::ColorRole kDimText = QPalette::PlaceholderText;
inline constexpr QPalette::ColorRole kBadText = QPalette::BrightText;
inline constexpr QPalette::ColorRole kLinkText = QPalette::Link;

// The steps of all distances.
inline constexpr int kSmallGap = 4;
inline constexpr int kGap = 8;
inline constexpr int kInset = 12;
inline constexpr int kWideGap = 20;

const LookColours& LightColours();
const LookColours& DarkColours();
// Those in use. Drawing asks each time; nothing is to keep a colour.
const LookColours& CurrentColours();
QColor ColourOf(LookRole role);
// The toolkit's palette of a set of colours.
QPalette PaletteOf(const LookColours& colours);

// Gives the program its style, its palette and its icon. Once, before the first window.
void ApplyLook(QApplication& application, ThemeChoice theme);
// Later changes, by the user and by the desktop; windows follow at once.
void SetTheme(ThemeChoice theme);
void SetDesktopScheme(DesktopScheme scheme);

}  // namespace brindle
