#include "ui/look_paint.h"

#include <QStyle>

#include "ui/icons.h"
#include "ui/look.h"

namespace brindle {
namespace {

constexpr int kIconGap = 6;
constexpr int kMenuArrowWidth = 20;
constexpr int kUnderline = 2;
constexpr int kThinBar = 4;
constexpr int kDarker = 112;  // percent, of the accent under the mouse
constexpr int kDarkest = 125;

bool IsAccented(const QStyleOptionButton& option) {
  return option.features & QStyleOptionButton::DefaultButton && IsEnabled(option);
}

bool IsDown(const QStyleOption& option) {
  return option.state & (QStyle::State_Sunken | QStyle::State_On);
}

BoxShape ShapeOfAccented(const QStyleOptionButton& option) {
  const QColor fill = CurrentColours().accentFill;
  if (IsDown(option)) return {fill.darker(kDarkest), {}};
  return {WhenHovered(option, fill.darker(kDarker), fill), {}};
}

BoxShape ShapeOfPlain(const QStyleOptionButton& option) {
  const LookColours& colours = CurrentColours();
  const bool flat = option.features & QStyleOptionButton::Flat;
  const QColor edge = flat ? QColor() : IsEnabled(option) ? colours.outline : colours.divider;
  if (IsDown(option)) return {colours.pressed, edge};
  return {WhenHovered(option, colours.hover, flat ? QColor() : colours.raised), edge};
}

}  // namespace

void DrawButton(QPainter& painter, const QStyleOptionButton& option) {
  const bool accented = IsAccented(option);
  DrawBox(painter, option.rect, accented ? ShapeOfAccented(option) : ShapeOfPlain(option));
  if (!ShowsFocus(option)) return;
  const LookColours& colours = CurrentColours();
  // On the accent itself the ring stands inside, in the colour of its text.
  const QRectF ring = accented ? QRectF(option.rect).adjusted(2, 2, -2, -2) : QRectF(option.rect);
  DrawBox(painter, ring,
          {{},
           accented ? colours.accentText : colours.accent,
           accented ? kCornerRadius - 2 : kCornerRadius,
           accented ? qreal{1} : qreal{kRingWidth}});
}

namespace {

// The icons of buttons have one colour, so the shape can be taken from any of them.
QPixmap ButtonPixmap(QPainter& painter, const QStyleOptionButton& option, const QColor& accent) {
  const QIcon::Mode mode = IsEnabled(option) ? QIcon::Normal : QIcon::Disabled;
  QPixmap pixmap = option.icon.pixmap(option.iconSize, painter.device()->devicePixelRatio(), mode);
  if (!accent.isValid() || pixmap.isNull()) return pixmap;
  QPainter tint(&pixmap);
  tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
  tint.fillRect(QRectF({}, pixmap.deviceIndependentSize()), accent);
  return pixmap;
}

}  // namespace

void DrawButtonLabel(QPainter& painter, const QStyleOptionButton& option,
                     QPalette::ColorRole role) {
  const SavedPainter saved(painter);
  const LookColours& colours = CurrentColours();
  const bool accented = IsAccented(option);
  const QColor text = accented ? colours.accentText : option.palette.color(role);
  QRect rect = option.rect.adjusted(kSmallGap, 0, -kSmallGap, 0);
  if (option.features & QStyleOptionButton::HasMenu) {
    const QRect arrow(rect.right() - kMenuArrowWidth, rect.top(), kMenuArrowWidth, rect.height());
    const QColor chevron = accented ? text : IsEnabled(option) ? colours.dim : colours.disabled;
    DrawArrow(painter, QStyle::visualRect(option.direction, rect, arrow), Qt::DownArrow, chevron);
    rect = QStyle::visualRect(option.direction, rect,
                              rect.adjusted(kMenuArrowWidth / 2, 0, -kMenuArrowWidth, 0));
  }
  if (accented) painter.setFont(Medium(painter.font()));
  int width = painter.fontMetrics().size(Qt::TextShowMnemonic, option.text).width();
  if (!option.icon.isNull()) {
    const QPixmap pixmap = ButtonPixmap(painter, option, accented ? text : QColor());
    const QSize size = pixmap.deviceIndependentSize().toSize();
    const int gap = option.text.isEmpty() ? 0 : kIconGap;
    const int start = rect.left() + std::max(0, (rect.width() - size.width() - gap - width) / 2);
    const QRect place({start, rect.center().y() - size.height() / 2 + 1 - size.height() % 2}, size);
    painter.drawPixmap(QStyle::visualRect(option.direction, rect, place), pixmap);
    rect = QStyle::visualRect(
        option.direction, rect,
        QRect(start + size.width() + gap, rect.top(), std::max(0, width), rect.height()));
  }
  painter.setPen(text);
  painter.drawText(rect, Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextDontClip, option.text);
}

void DrawTab(QPainter& painter, const QStyleOptionTab& option) {
  if (ShowsFocus(option) && (option.state & QStyle::State_Selected)) {
    DrawBox(painter, QRectF(option.rect).adjusted(2, 2, -2, -4),
            {{}, CurrentColours().accent, kCornerRadius, 1});
  }
  if (!(option.state & QStyle::State_Selected)) return;
  QRect line = option.rect;
  switch (option.shape) {
    case QTabBar::RoundedSouth:
    case QTabBar::TriangularSouth:
      line.setHeight(kUnderline);
      break;
    case QTabBar::RoundedWest:
    case QTabBar::TriangularWest:
      line.setLeft(line.right() + 1 - kUnderline);
      break;
    case QTabBar::RoundedEast:
    case QTabBar::TriangularEast:
      line.setWidth(kUnderline);
      break;
    case QTabBar::RoundedNorth:
    case QTabBar::TriangularNorth:
      line.setTop(line.bottom() + 1 - kUnderline);
      break;
  }
  painter.fillRect(line, CurrentColours().accent);
}

namespace {

void DrawMenuMark(QPainter& painter, const QStyleOptionMenuItem& option, const QRect& column,
                  const QColor& colour) {
  if (option.checkType != QStyleOptionMenuItem::NotCheckable) {
    if (option.checked) DrawTick(painter, Centred(column, kCheckSize), colour);
  } else if (!option.icon.isNull()) {
    const bool selected = option.state & QStyle::State_Selected;
    const QIcon::Mode mode = !IsEnabled(option) ? QIcon::Disabled
                             : selected         ? QIcon::Selected
                                                : QIcon::Normal;
    option.icon.paint(&painter, Centred(column, kIconSize).toRect(), Qt::AlignCenter, mode);
  }
}

}  // namespace

void DrawMenuItem(QPainter& painter, const QStyleOptionMenuItem& option) {
  const SavedPainter saved(painter);
  const LookColours& colours = CurrentColours();
  if (option.menuItemType == QStyleOptionMenuItem::Separator) {
    const int middle = option.rect.center().y();
    painter.fillRect(option.rect.left(), middle, option.rect.width(), 1, colours.divider);
    return;
  }
  const bool selected = (option.state & QStyle::State_Selected) && IsEnabled(option);
  if (selected) DrawBox(painter, option.rect, {colours.selection, {}});
  const QColor text = !IsEnabled(option) ? colours.disabled
                      : selected         ? colours.selectionText
                                         : colours.text;
  const auto visual = [&option](const QRect& rect) {
    return QStyle::visualRect(option.direction, option.rect, rect);
  };
  const bool column = option.menuHasCheckableItems || option.maxIconWidth > 0;
  QRect mark = option.rect;
  mark.setWidth(kMenuColumn);
  DrawMenuMark(painter, option, visual(mark), text);

  const QRect inside =
      option.rect.adjusted(column ? kMenuColumn : kMenuPadding, 0, -kMenuPadding, 0);
  const QStringList parts = option.text.split('\t');
  painter.setFont(option.font);
  painter.setPen(text);
  constexpr int kFlags = Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextShowMnemonic;
  const bool leftToRight = option.direction == Qt::LeftToRight;
  painter.drawText(visual(inside), kFlags | (leftToRight ? Qt::AlignLeft : Qt::AlignRight),
                   parts.first());
  if (parts.size() > 1) {
    painter.setPen(selected ? text : IsEnabled(option) ? colours.dim : colours.disabled);
    painter.drawText(visual(inside), kFlags | (leftToRight ? Qt::AlignRight : Qt::AlignLeft),
                     parts.at(1));
  }
  if (option.menuItemType == QStyleOptionMenuItem::SubMenu) {
    QRect arrow = inside;
    arrow.setLeft(arrow.right() - kMenuPadding);
    DrawArrow(painter, visual(arrow), leftToRight ? Qt::RightArrow : Qt::LeftArrow, text);
  }
}

void DrawProgress(QPainter& painter, const QStyleOptionProgressBar& option) {
  const LookColours& colours = CurrentColours();
  QRect bar = option.rect;
  // A text stands above the bar, and the bar alone in the middle.
  const bool text = option.textVisible && option.rect.height() > 2 * kThinBar;
  bar.setHeight(kThinBar);
  bar.moveTop(text ? option.rect.bottom() + 1 - kThinBar
                   : option.rect.center().y() + 1 - kThinBar / 2);
  DrawBox(painter, bar, {colours.divider, {}, kThinBar / 2.0});
  const qint64 range = qint64{option.maximum} - option.minimum;
  if (range > 0 && option.progress > option.minimum) {
    QRect done = bar;
    done.setWidth(
        static_cast<int>(bar.width() * (qint64{option.progress} - option.minimum) / range));
    const Qt::LayoutDirection direction =
        option.invertedAppearance == (option.direction == Qt::LeftToRight) ? Qt::RightToLeft
                                                                           : Qt::LeftToRight;
    DrawBox(painter, QStyle::visualRect(direction, bar, done),
            {colours.accent, {}, kThinBar / 2.0});
  }
  if (!text) return;
  painter.setPen(IsEnabled(option) ? colours.text : colours.disabled);
  painter.drawText(option.rect.adjusted(0, 0, 0, -kThinBar), Qt::AlignCenter, option.text);
}

}  // namespace brindle
