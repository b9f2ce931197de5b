#include "ui/look_paint.h"

#include <QStyle>

#include "ui/look.h"

namespace brindle {
namespace {

QPen RoundPen(const QColor& colour, qreal width) {
  return {colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

struct MarkColours {
  QColor fill;
  QColor edge;
  QColor mark;
};

// Of a check box or radio button.
MarkColours ColoursOfMark(const QStyleOption& option) {
  const LookColours& colours = CurrentColours();
  const bool marked = option.state & (QStyle::State_On | QStyle::State_NoChange);
  if (!IsEnabled(option)) {
    return {marked ? colours.disabled : colours.surface, colours.disabled, colours.surface};
  }
  if (marked) return {colours.accentFill, colours.accentFill, colours.accentText};
  return {colours.base, WhenHovered(option, colours.accent, colours.outline), colours.base};
}

}  // namespace

QRectF Centred(const QRect& rect, int side) {
  QRect box(0, 0, side, side);
  box.moveCenter(rect.center());
  return box;
}

bool IsEnabled(const QStyleOption& option) { return option.state & QStyle::State_Enabled; }

bool ShowsFocus(const QStyleOption& option) {
  return (option.state & QStyle::State_HasFocus) &&
         (option.state & QStyle::State_KeyboardFocusChange);
}

QColor WhenHovered(const QStyleOption& option, const QColor& hovered, const QColor& otherwise) {
  return IsEnabled(option) && (option.state & QStyle::State_MouseOver) ? hovered : otherwise;
}

QFont Medium(QFont font) {
  font.setWeight(QFont::DemiBold);
  return font;
}

void DrawBox(QPainter& painter, const QRectF& rect, const BoxShape& shape) {
  const SavedPainter saved(painter);
  const qreal inset = shape.edge.isValid() ? shape.edgeWidth / 2 : 0;
  painter.setPen(shape.edge.isValid() ? QPen(shape.edge, shape.edgeWidth) : QPen(Qt::NoPen));
  painter.setBrush(shape.fill.isValid() ? QBrush(shape.fill) : QBrush(Qt::NoBrush));
  const qreal radius = std::max<qreal>(0, shape.radius - inset);
  painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius, radius);
}

void DrawTick(QPainter& painter, const QRectF& box, const QColor& colour) {
  const SavedPainter saved(painter);
  painter.setPen(RoundPen(colour, box.width() / 8));
  painter.setBrush(Qt::NoBrush);
  const auto at = [&box](qreal x, qreal y) {
    return box.topLeft() + QPointF(x * box.width(), y * box.height());
  };
  painter.drawPolyline(QPolygonF({at(0.27, 0.53), at(0.43, 0.69), at(0.74, 0.34)}));
}

void DrawArrow(QPainter& painter, const QRectF& rect, Qt::ArrowType direction,
               const QColor& colour) {
  const SavedPainter saved(painter);
  painter.translate(rect.center());
  constexpr int kQuarterTurn = 90;
  const int turns = direction == Qt::LeftArrow    ? 1
                    : direction == Qt::UpArrow    ? 2
                    : direction == Qt::RightArrow ? 3
                                                  : 0;
  painter.rotate(turns * kQuarterTurn);
  painter.setPen(RoundPen(colour, 1.3));
  painter.drawPolyline(QPolygonF({{-3.5, -1.75}, {0, 1.75}, {3.5, -1.75}}));
}

void DrawCheckBox(QPainter& painter, const QStyleOption& option) {
  const MarkColours colours = ColoursOfMark(option);
  const QRectF box = Centred(option.rect, kCheckSize);
  DrawBox(painter, box, {colours.fill, colours.edge, kCheckRadius});
  if (option.state & QStyle::State_NoChange) {
    const QRectF dash(box.center() - QPointF(4, 1), QSizeF(8, 2));
    DrawBox(painter, dash, {colours.mark, {}, 1});
  } else if (option.state & QStyle::State_On) {
    DrawTick(painter, box, colours.mark);
  }
}

void DrawRadioButton(QPainter& painter, const QStyleOption& option) {
  const MarkColours colours = ColoursOfMark(option);
  const QRectF box = Centred(option.rect, kCheckSize);
  DrawBox(painter, box, {colours.fill, colours.edge, box.width() / 2});
  if (option.state & QStyle::State_On) {
    const QRectF dot = box.adjusted(5, 5, -5, -5);
    DrawBox(painter, dot, {colours.mark, {}, dot.width() / 2});
  }
}

void DrawField(QPainter& painter, const QStyleOption& option) {
  const LookColours& colours = CurrentColours();
  const QColor fill = option.palette.color(QPalette::Base);
  if (!IsEnabled(option)) return DrawBox(painter, option.rect, {fill, colours.divider});
  if (option.state & QStyle::State_HasFocus) {
    return DrawBox(painter, option.rect, {fill, colours.accent, kCornerRadius, kRingWidth});
  }
  DrawBox(painter, option.rect, {fill, WhenHovered(option, colours.dim, colours.outline)});
}

}  // namespace brindle
