// The controls of LookStyle: how they are drawn and where their parts lie.

#include <QApplication>
#include <QDialog>
#include <QPushButton>

#include "ui/look.h"
#include "ui/look_paint.h"
#include "ui/look_rects.h"
#include "ui/look_style.h"

namespace brindle {
namespace {

constexpr int kScrollMargin = 2;

void DrawSplitter(QPainter& painter, const QStyleOption& option) {
  QRect line = option.rect;
  const bool upright = option.state & QStyle::State_Horizontal;
  upright ? line.setWidth(1) : line.setHeight(1);
  line.moveCenter(option.rect.center());
  painter.fillRect(line, WhenHovered(option, CurrentColours().outline, CurrentColours().divider));
}

void DrawHeaderSection(QPainter& painter, const QStyleOption& option) {
  painter.fillRect(option.rect, CurrentColours().raised);
  QRect rule = option.rect;
  rule.setTop(rule.bottom());
  painter.fillRect(rule, CurrentColours().divider);
}

void DrawScrollBar(QPainter& painter, const QStyleOptionSlider& option, const QRect& slider,
                   const QWidget* widget) {
  painter.fillRect(option.rect, PageColour(widget));
  if (option.maximum <= option.minimum) return;
  const LookColours& colours = CurrentColours();
  const bool held = (option.state & QStyle::State_Sunken) &&
                    option.activeSubControls & QStyle::SC_ScrollBarSlider;
  const QRectF handle =
      QRectF(slider).adjusted(kScrollMargin, kScrollMargin, -kScrollMargin, -kScrollMargin);
  DrawBox(painter, handle,
          {held ? colours.dim : WhenHovered(option, colours.dim, colours.outline),
           {},
           std::min(handle.width(), handle.height()) / 2});
}

void DrawSpinBox(QPainter& painter, const QStyleOptionSpinBox& option) {
  if (option.frame) DrawField(painter, option);
  const LookColours& colours = CurrentColours();
  const auto arrow = [&](QStyle::SubControl part, Qt::ArrowType direction, bool can) {
    const QRect rect = SpinBoxPart(option, part);
    if (rect.isEmpty()) return;
    const bool over = option.activeSubControls & part;
    const QColor colour = !can || !IsEnabled(option) ? colours.disabled
                          : over                     ? colours.text
                                                     : colours.dim;
    DrawArrow(painter, rect, direction, colour);
  };
  arrow(QStyle::SC_SpinBoxUp, Qt::UpArrow, option.stepEnabled & QAbstractSpinBox::StepUpEnabled);
  arrow(QStyle::SC_SpinBoxDown, Qt::DownArrow,
        option.stepEnabled & QAbstractSpinBox::StepDownEnabled);
}

// Outside dialogs the accent belongs to the button that had it from the beginning.
QStyleOptionButton WithOwnAccent(QStyleOptionButton button, const QWidget* widget) {
  if (qobject_cast<const QPushButton*>(widget) == nullptr ||
      qobject_cast<const QDialog*>(widget->window()) != nullptr) {
    return button;
  }
  button.features.setFlag(QStyleOptionButton::DefaultButton,
                          widget->property(kAccentedProperty).toBool());
  return button;
}

}  // namespace

void LookStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
  const LookColours& colours = CurrentColours();
  switch (element) {
    case CE_PushButton:
      // Without the frame of the focus, which the bevel draws.
      proxy()->drawControl(CE_PushButtonBevel, option, painter, widget);
      return proxy()->drawControl(CE_PushButtonLabel, option, painter, widget);
    case CE_PushButtonBevel:
      if (const auto* button = As<QStyleOptionButton>(option)) {
        return DrawButton(*painter, WithOwnAccent(*button, widget));
      }
      break;
    case CE_PushButtonLabel:
      if (const auto* button = As<QStyleOptionButton>(option)) {
        return DrawButtonLabel(*painter, WithOwnAccent(*button, widget),
                               widget == nullptr ? QPalette::ButtonText : widget->foregroundRole());
      }
      break;
    case CE_TabBarTabShape:
      if (const auto* tab = As<QStyleOptionTab>(option)) return DrawTab(*painter, *tab);
      break;
    case CE_TabBarTabLabel:
      if (const auto* tab = As<QStyleOptionTab>(option)) {
        QStyleOptionTab label(*tab);
        const bool current = tab->state & State_Selected;
        label.state &= ~State_HasFocus;  // shown by the shape
        label.palette.setColor(
            QPalette::WindowText,
            current ? colours.text : WhenHovered(*tab, colours.text, colours.dim));
        if (!IsEnabled(*tab)) label.palette.setColor(QPalette::WindowText, colours.disabled);
        const SavedPainter saved(*painter);
        // The bar has the font of its current tab.
        QFont font = painter->font();
        if (!current) font.setWeight(QApplication::font(widget).weight());
        painter->setFont(font);
        return QProxyStyle::drawControl(element, &label, painter, widget);
      }
      break;
    case CE_HeaderSection:
    case CE_HeaderEmptyArea:
      return DrawHeaderSection(*painter, *option);
    case CE_HeaderLabel:
      if (const auto* header = As<QStyleOptionHeader>(option)) {
        QStyleOptionHeaderV2 label;
        static_cast<QStyleOptionHeader&>(label) = *header;
        label.palette.setColor(QPalette::ButtonText, colours.dim);
        const SavedPainter saved(*painter);
        painter->setFont(Medium(painter->font()));
        return QProxyStyle::drawControl(element, &label, painter, widget);
      }
      break;
    case CE_ProgressBar:
      if (const auto* bar = As<QStyleOptionProgressBar>(option))
        return DrawProgress(*painter, *bar);
      break;
    case CE_Splitter:
      return DrawSplitter(*painter, *option);
    case CE_MenuItem:
      if (const auto* item = As<QStyleOptionMenuItem>(option)) return DrawMenuItem(*painter, *item);
      break;
    case CE_ShapedFrame:
      if (const auto* frame = As<QStyleOptionFrame>(option)) {
        QRect rule = frame->rect;
        const bool across = frame->frameShape == QFrame::HLine;
        if (across || frame->frameShape == QFrame::VLine) {
          across ? rule.setHeight(1) : rule.setWidth(1);
          rule.moveCenter(frame->rect.center());
          return painter->fillRect(rule, colours.divider);
        }
      }
      break;
    default:
      break;
  }
  QProxyStyle::drawControl(element, option, painter, widget);
}

void LookStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
  switch (control) {
    case CC_ComboBox:
      if (const auto* box = As<QStyleOptionComboBox>(option)) {
        if (box->frame) DrawField(*painter, *box);
        const LookColours& colours = CurrentColours();
        return DrawArrow(*painter, ComboBoxPart(*box, SC_ComboBoxArrow), Qt::DownArrow,
                         IsEnabled(*box) ? colours.dim : colours.disabled);
      }
      break;
    case CC_SpinBox:
      if (const auto* box = As<QStyleOptionSpinBox>(option)) return DrawSpinBox(*painter, *box);
      break;
    case CC_ScrollBar:
      if (const auto* bar = As<QStyleOptionSlider>(option)) {
        return DrawScrollBar(*painter, *bar,
                             proxy()->subControlRect(control, bar, SC_ScrollBarSlider, widget),
                             widget);
      }
      break;
    case CC_GroupBox:
      if (const auto* box = As<QStyleOptionGroupBox>(option)) {
        QStyleOptionGroupBox title(*box);
        if (!title.textColor.isValid()) {
          title.textColor = IsEnabled(*box) ? CurrentColours().text : CurrentColours().disabled;
        }
        const SavedPainter saved(*painter);
        painter->setFont(Medium(painter->font()));
        return QProxyStyle::drawComplexControl(control, &title, painter, widget);
      }
      break;
    default:
      break;
  }
  QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect LookStyle::subElementRect(SubElement element, const QStyleOption* option,
                                const QWidget* widget) const {
  switch (element) {
    case SE_LineEditContents: {
      const auto* frame = As<QStyleOptionFrame>(option);
      if (frame == nullptr || frame->lineWidth == 0) return option->rect;
      return option->rect.adjusted(kFieldInset, 1, -kFieldInset, -1);
    }
    case SE_HeaderLabel:
      // In line with the text of the cells below.
      return QProxyStyle::subElementRect(element, option, widget).adjusted(2, 0, -2, 0);
    case SE_ProgressBarGroove:
    case SE_ProgressBarContents:
    case SE_ProgressBarLabel:
      return option->rect;
    default:
      return QProxyStyle::subElementRect(element, option, widget);
  }
}

QRect LookStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                SubControl part, const QWidget* widget) const {
  switch (control) {
    case CC_ComboBox:
      if (const auto* box = As<QStyleOptionComboBox>(option)) return ComboBoxPart(*box, part);
      break;
    case CC_SpinBox:
      if (const auto* box = As<QStyleOptionSpinBox>(option)) return SpinBoxPart(*box, part);
      break;
    case CC_GroupBox:
      if (const auto* box = As<QStyleOptionGroupBox>(option)) {
        return GroupBoxPart(*box, part, QFontMetrics(Medium(FontOf(widget))));
      }
      break;
    case CC_ScrollBar:
      if (const auto* bar = As<QStyleOptionSlider>(option)) {
        return ScrollBarPart(*bar, part, pixelMetric(PM_ScrollBarSliderMin, option, widget));
      }
      break;
    default:
      break;
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

}  // namespace brindle
