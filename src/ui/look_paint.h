#pragma once
// The shapes that the style is made of, in the colours of the current palette. All measures are
// logical pixels; edges are one such pixel wide and sharp at every scale.

#include <QPainter>
#include <QStyleOption>

namespace brindle {

inline constexpr qreal kCornerRadius = 5;
inline constexpr qreal kCardRadius = 8;
inline constexpr qreal kCheckRadius = 4;
inline constexpr int kCheckSize = 16;
inline constexpr int kRingWidth = 2;

// Puts back what is changed in a painter, and smooths edges until then.
class SavedPainter {
 public:
  explicit SavedPainter(QPainter& painter) : painter_(painter) {
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing);
  }
  ~SavedPainter() { painter_.restore(); }
  SavedPainter(const SavedPainter&) = delete;
  SavedPainter& operator=(const SavedPainter&) = delete;

 private:
  QPainter& painter_;
};

// A box with round corners; an edge or a filling that is no colour is left out.
struct BoxShape {
  QColor fill;
  QColor edge;
  qreal radius = kCornerRadius;
  qreal edgeWidth = 1;
};
void DrawBox(QPainter& painter, const QRectF& rect, const BoxShape& shape);

void DrawTick(QPainter& painter, const QRectF& box, const QColor& colour);
void DrawArrow(QPainter& painter, const QRectF& rect, Qt::ArrowType direction,
               const QColor& colour);

// The box itself, 16 by 16 in the middle of the option's rectangle.
void DrawCheckBox(QPainter& painter, const QStyleOption& option);
void DrawRadioButton(QPainter& painter, const QStyleOption& option);

// Where text is entered or chosen: its filling, its edge and the ring of the focus.
void DrawField(QPainter& painter, const QStyleOption& option);

void DrawButton(QPainter& painter, const QStyleOptionButton& option);
// Text, icon and, where a menu belongs to it, an arrow. `role` colours the text of plain buttons.
void DrawButtonLabel(QPainter& painter, const QStyleOptionButton& option, QPalette::ColorRole role);

void DrawTab(QPainter& painter, const QStyleOptionTab& option);
void DrawMenuItem(QPainter& painter, const QStyleOptionMenuItem& option);
void DrawProgress(QPainter& painter, const QStyleOptionProgressBar& option);

// The first colour where the mouse is over an enabled control.
QColor WhenHovered(const QStyleOption& option, const QColor& hovered, const QColor& otherwise);
// A square in the middle of a rectangle.
QRectF Centred(const QRect& rect, int side);
bool IsEnabled(const QStyleOption& option);
// The focus is shown once the keyboard has moved it.
bool ShowsFocus(const QStyleOption& option);
QFont Medium(QFont font);

// Where a menu's entry holds its tick or icon, and its text.
inline constexpr int kMenuColumn = 28;
inline constexpr int kMenuPadding = 12;

}  // namespace brindle
