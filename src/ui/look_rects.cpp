#include "ui/look_rects.h"

#include <QAbstractScrollArea>

#include "ui/look.h"
#include "ui/look_paint.h"

namespace brindle {
namespace {

constexpr int kLeastControlHeight = 30;
constexpr int kTextRoom = 14;  // above and below the text together
constexpr int kArrowWidth = 28;
constexpr int kSpinWidth = 22;
constexpr int kCardInset = 16;

}  // namespace

int ControlHeight(const QStyleOption& option) {
  return std::max(kLeastControlHeight, option.fontMetrics.height() + kTextRoom);
}

QRect ComboBoxPart(const QStyleOptionComboBox& option, QStyle::SubControl part) {
  QRect rect = option.rect;
  switch (part) {
    case QStyle::SC_ComboBoxArrow:
      rect.setLeft(rect.right() + 1 - kArrowWidth);
      break;
    case QStyle::SC_ComboBoxEditField:
      rect.adjust(kFieldInset, 1, -kArrowWidth, -1);
      break;
    default:
      break;
  }
  return QStyle::visualRect(option.direction, option.rect, rect);
}

QRect SpinBoxPart(const QStyleOptionSpinBox& option, QStyle::SubControl part) {
  QRect rect = option.rect;
  QRect buttons = rect.adjusted(0, 1, -1, -1);
  buttons.setLeft(rect.right() - kSpinWidth);
  const bool hasButtons = option.buttonSymbols != QAbstractSpinBox::NoButtons;
  switch (part) {
    case QStyle::SC_SpinBoxUp:
      if (!hasButtons) return {};
      rect = buttons;
      rect.setHeight(buttons.height() / 2);
      break;
    case QStyle::SC_SpinBoxDown:
      if (!hasButtons) return {};
      rect = buttons;
      rect.setTop(buttons.top() + buttons.height() / 2);
      break;
    case QStyle::SC_SpinBoxEditField:
      rect.adjust(kFieldInset, 1, hasButtons ? -kSpinWidth - 1 : -kFieldInset, -1);
      break;
    default:
      break;
  }
  return QStyle::visualRect(option.direction, option.rect, rect);
}

QRect GroupBoxPart(const QStyleOptionGroupBox& option, QStyle::SubControl part,
                   const QFontMetrics& metrics) {
  const bool flat = option.features & QStyleOptionFrame::Flat;
  const int side = flat ? 0 : kCardInset;
  const int edge = flat ? kGap : kInset;
  QRect title(option.rect.left() + side, option.rect.top() + edge, 0, 0);
  const bool checkable = option.subControls & QStyle::SC_GroupBoxCheckBox;
  if (!option.text.isEmpty() || checkable) {
    title.setSize({metrics.size(Qt::TextShowMnemonic, option.text).width() + kSmallGap,
                   std::max(metrics.height(), checkable ? kCheckSize : 0)});
  }
  QRect rect = option.rect;
  switch (part) {
    case QStyle::SC_GroupBoxCheckBox:
      rect = QRect(title.left(), title.center().y() - kCheckSize / 2, kCheckSize, kCheckSize);
      break;
    case QStyle::SC_GroupBoxLabel:
      rect = title.translated(checkable ? kCheckSize + kGap : 0, 0);
      break;
    case QStyle::SC_GroupBoxContents:
      rect.adjust(side, edge + (title.height() > 0 ? title.height() + kGap : 0), -side, -edge);
      break;
    default:
      break;
  }
  return QStyle::visualRect(option.direction, option.rect, rect);
}

QRect ScrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part, int leastSlider) {
  const bool across = option.orientation == Qt::Horizontal;
  const int length = across ? option.rect.width() : option.rect.height();
  const qint64 range = qint64{option.maximum} - option.minimum;
  int slider = length;
  if (range > 0) {
    slider = static_cast<int>(qint64{length} * option.pageStep / (range + option.pageStep));
    slider = std::min(length, std::max(slider, leastSlider));
  }
  const int start = QStyle::sliderPositionFromValue(
      option.minimum, option.maximum, option.sliderPosition, length - slider, option.upsideDown);
  int from = 0;
  int to = length;
  switch (part) {
    case QStyle::SC_ScrollBarSlider:
      from = start;
      to = start + slider;
      break;
    case QStyle::SC_ScrollBarSubPage:
      to = start;
      break;
    case QStyle::SC_ScrollBarAddPage:
      from = start + slider;
      break;
    case QStyle::SC_ScrollBarGroove:
      break;
    default:
      return {};  // no buttons at the ends
  }
  const QRect rect = option.rect;
  const QRect place = across ? QRect(rect.left() + from, rect.top(), to - from, rect.height())
                             : QRect(rect.left(), rect.top() + from, rect.width(), to - from);
  return QStyle::visualRect(option.direction, rect, place);
}

QColor PageColour(const QWidget* widget) {
  for (const QWidget* at = widget; at != nullptr; at = at->parentWidget()) {
    const auto* area = qobject_cast<const QAbstractScrollArea*>(at);
    if (area == nullptr) continue;
    const QWidget* page = area->viewport();
    // The page may show what is behind it, and then the bar does too.
    const bool own = page->autoFillBackground() || page->testAttribute(Qt::WA_OpaquePaintEvent);
    return own ? page->palette().color(page->backgroundRole()) : CurrentColours().surface;
  }
  return CurrentColours().surface;
}

}  // namespace brindle
