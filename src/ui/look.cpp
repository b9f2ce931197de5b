#include "ui/look.h"

#include <QEvent>
#include <QPointer>
#include <QStyle>
#include <QToolTip>

#include "ui/icons.h"
#include "ui/look_style.h"

namespace brindle {
namespace {

constexpr int kHalfLight = 128;

// Chooses the palette and follows the desktop; lives as long as the application.
class Look : public QObject {
 public:
  Look(QApplication& application, ThemeChoice theme) : QObject(&application), theme_(theme) {
    QApplication::setStyle(new LookStyle);
    ReadDesktop();
    Show();
    application.installEventFilter(this);
  }

  void SetTheme(ThemeChoice theme) {
    theme_ = theme;
    Show();
  }

  void SetScheme(DesktopScheme scheme) {
    scheme_ = scheme;
    Show();
  }

 protected:
  // The desktop has another theme. Every window is told, but one look at it is enough.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::ThemeChange && !pending_) {
      pending_ = true;
      QMetaObject::invokeMethod(
          this, [this] { Reread(); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  void Reread() {
    pending_ = false;
    // The desktop's palette can be seen only while the program has none of its own.
    QApplication::setPalette(QPalette());
    ReadDesktop();
    shown_ = nullptr;
    Show();
  }

  void ReadDesktop() {
    const QColor window = QGuiApplication::palette().color(QPalette::Window);
    const QColor plain = QApplication::style()->standardPalette().color(QPalette::Window);
    // A desktop without a palette of its own may still have told the toolkit what it wants.
    desktopIsDark_ = window.lightness() < kHalfLight || plain.lightness() < kHalfLight;
  }

  bool IsDark() const {
    if (theme_ != ThemeChoice::kSystem) return theme_ == ThemeChoice::kDark;
    return scheme_ == DesktopScheme::kUnknown ? desktopIsDark_ : scheme_ == DesktopScheme::kDark;
  }

  void Show();

  ThemeChoice theme_;
  DesktopScheme scheme_ = DesktopScheme::kUnknown;
  const LookColours* shown_ = nullptr;
  bool desktopIsDark_ = false;
  bool pending_ = false;
};

// One of each for the program, as the toolkit has one palette.
QPointer<Look> theLook;
const LookColours* current = nullptr;

void Look::Show() {
  const LookColours& wanted = IsDark() ? DarkColours() : LightColours();
  if (shown_ == &wanted) return;
  shown_ = &wanted;
  current = &wanted;
  const QPalette palette = PaletteOf(wanted);
  QApplication::setPalette(palette);
  QToolTip::setPalette(palette);
}

}  // namespace

const LookColours& LightColours() {
  static const LookColours colours{
      .surface = 0xF5F6F8U,
      .base = 0xFFFFFFU,
      .alternate = 0xF8F9FBU,
      .raised = 0xFFFFFFU,
      .hover = 0xEEF0F4U,
      .pressed = 0xE4E7EDU,
      .divider = 0xDFE2E8U,
      .outline = 0x868C97U,
      .text = 0x1C1E21U,
      .dim = 0x5F6570U,
      .disabled = 0x868C97U,
      .link = 0x1A5FD0U,
      .accent = 0x1F6FEBU,
      .accentFill = 0x1F6FEBU,
      .accentText = 0xFFFFFFU,
      .selection = 0xDBE9FFU,
      .selectionText = 0x1C1E21U,
      .good = 0x14804AU,
      .warning = 0x8F5B00U,
      .bad = 0xC62828U,
  };
  return colours;
}

const LookColours& DarkColours() {
  static const LookColours colours{
      .surface = 0x1E2024U,
      .base = 0x1A1C1FU,
      .alternate = 0x1F2226U,
      .raised = 0x25282DU,
      .hover = 0x2D3137U,
      .pressed = 0x363A41U,
      .divider = 0x363A41U,
      .outline = 0x6E757FU,
      .text = 0xECEEF1U,
      .dim = 0xA8AEB8U,
      .disabled = 0x6E757FU,
      .link = 0x8AB8FFU,
      .accent = 0x6EA8FEU,
      .accentFill = 0x2F6FE0U,
      .accentText = 0xFFFFFFU,
      .selection = 0x24406DU,
      .selectionText = 0xF2F5FAU,
      .good = 0x4EC98AU,
      .warning = 0xF0B54AU,
      .bad = 0xFF7B72U,
  };
  return colours;
}

// Before the look is applied, as in tests and benchmarks of single widgets, it is the light one.
const LookColours& CurrentColours() { return current == nullptr ? LightColours() : *current; }

QColor ColourOf(LookRole role) {
  const LookColours& colours = CurrentColours();
  switch (role) {
    case LookRole::kText:
      return colours.text;
    case LookRole::kDim:
      return colours.dim;
    case LookRole::kAccent:
      return colours.accent;
    case LookRole::kGood:
      return colours.good;
    case LookRole::kWarning:
      return colours.warning;
    case LookRole::kBad:
      return colours.bad;
  }
  return colours.text;
}

QPalette PaletteOf(const LookColours& colours) {
  const std::pair<QPalette::ColorRole, QColor> roles[] = {
      {QPalette::Window, colours.surface},
      {QPalette::WindowText, colours.text},
      {QPalette::Base, colours.base},
      {QPalette::AlternateBase, colours.alternate},
      {QPalette::Text, colours.text},
      {QPalette::Button, colours.raised},
      {QPalette::ButtonText, colours.text},
      {QPalette::ToolTipBase, colours.raised},
      {QPalette::ToolTipText, colours.text},
      {QPalette::Highlight, colours.selection},
      {QPalette::HighlightedText, colours.selectionText},
      {QPalette::Link, colours.link},
      {QPalette::LinkVisited, colours.link},
      {QPalette::Light, colours.raised},
      {QPalette::Midlight, colours.hover},
      {QPalette::Mid, colours.divider},
      {QPalette::Dark, colours.outline},
      {QPalette::Shadow, colours.outline},
      {kDimText, colours.dim},
      {kBadText, colours.bad},
  };
  QPalette palette;
  for (const auto& [role, colour] : roles) palette.setColor(role, colour);
  for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                   QPalette::HighlightedText, kDimText, kBadText}) {
    palette.setColor(QPalette::Disabled, role, colours.disabled);
  }
  palette.setColor(QPalette::Disabled, QPalette::Base, colours.surface);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, colours.pressed);
  return palette;
}

void ApplyLook(QApplication& application, ThemeChoice theme) {
  theLook = new Look(application, theme);
  QApplication::setWindowIcon(ApplicationIcon());
}

void SetTheme(ThemeChoice theme) {
  if (theLook) theLook->SetTheme(theme);
}

void SetDesktopScheme(DesktopScheme scheme) {
  if (theLook) theLook->SetScheme(scheme);
}

}  // namespace brindle
