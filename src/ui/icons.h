#pragma once
// The program's icons: drawings of one colour, which they take from the palette each time they are
// drawn, so that they follow the theme, dim when disabled and stand out on a selected row. A
// drawing is read when it is first needed.

#include <QIcon>
#include <QLabel>

#include "ui/look.h"

namespace brindle {

enum class IconName {
  kAdd,
  kCheck,
  kClear,
  kColours,
  kDot,
  kFilter,
  kFind,
  kInfo,
  kLink,
  kList,
  kLoad,
  kManual,
  kMisc,
  kPerson,
  kPersonOperator,
  kPersonVoice,
  kPlay,
  kPlug,
  kRemove,
  kRoom,
  kSend,
  kSound,
  kStop,
  kTheme,
  kTray,
  kUpdate,
};
inline constexpr int kIconNames = static_cast<int>(IconName::kUpdate) + 1;
inline constexpr int kIconSize = 16;
inline constexpr int kDotSize = 8;  // of a state, beside its words

QIcon MakeIcon(IconName name, LookRole role = LookRole::kText);

// The program's own icon, in its own colours.
QIcon ApplicationIcon();

// A patch of one colour, as it is or as the palette has it.
QIcon SwatchIcon(const QColor& colour);
QIcon SwatchIcon(QColor LookColours::*role);

// A label that shows one icon and follows the theme, as a state dot or above a hint.
class IconLabel : public QLabel {
 public:
  explicit IconLabel(IconName name, LookRole role = LookRole::kText, int size = kIconSize,
                     QWidget* parent = nullptr);

  void SetIcon(IconName name, LookRole role);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QIcon icon_;
  int size_;
};

}  // namespace brindle
