#include "ui/look_style.h"

#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

#include "ui/icons.h"
#include "ui/look.h"
#include "ui/look_paint.h"
#include "ui/look_rects.h"

namespace brindle {
namespace {

constexpr int kCellInset = 6;
constexpr int kWideTabs = 640;  // a narrower strip of tabs is set closer

// A box with a frame of its own around it draws the field; the line edit in it only holds text.
bool IsInsideField(const QWidget* widget) {
  const QWidget* parent = widget == nullptr ? nullptr : widget->parentWidget();
  return qobject_cast<const QComboBox*>(parent) != nullptr ||
         qobject_cast<const QAbstractSpinBox*>(parent) != nullptr;
}

void DrawFrame(QPainter& painter, const QStyleOption& option, const QWidget* widget) {
  const LookColours& colours = CurrentColours();
  const auto* frame = As<QStyleOptionFrame>(&option);
  const bool holdsAPage = qobject_cast<const QAbstractScrollArea*>(widget) != nullptr;
  if (frame != nullptr && !holdsAPage && frame->frameShape == QFrame::StyledPanel) {
    return DrawBox(painter, option.rect, {colours.raised, colours.divider, kCardRadius});
  }
  // The page has square corners, and so has its frame.
  painter.setPen(colours.divider);
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5));
}

void DrawFocus(QPainter& painter, const QStyleOption& option) {
  if (!(option.state & QStyle::State_KeyboardFocusChange)) return;
  const bool item = option.state & QStyle::State_Item;
  DrawBox(painter, option.rect, {{}, CurrentColours().accent, item ? qreal{2} : kCheckRadius});
}

void DrawItemPanel(QPainter& painter, const QStyleOptionViewItem& option, const QWidget* widget) {
  const bool selected = option.state & QStyle::State_Selected;
  if (option.backgroundBrush.style() != Qt::NoBrush) {
    painter.fillRect(option.rect, option.backgroundBrush);
  }
  if (!selected) return;
  const QColor fill = option.palette.color(QPalette::Highlight);
  // Rows of several cells are one bar; the entries of a plain list stand alone.
  if (qobject_cast<const QListView*>(widget) == nullptr) {
    painter.fillRect(option.rect, fill);
  } else {
    DrawBox(painter, option.rect, {fill, {}});
  }
}

void DrawEdged(QPainter& painter, const QRect& rect) {
  painter.fillRect(rect, CurrentColours().outline);
  painter.fillRect(rect.adjusted(1, 1, -1, -1), CurrentColours().raised);
}

void DrawTopRule(QPainter& painter, QRect rect) {
  rect.setHeight(1);
  painter.fillRect(rect, CurrentColours().divider);
}

}  // namespace

LookStyle::LookStyle() : QProxyStyle("Fusion") {}

void LookStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (qobject_cast<QLineEdit*>(widget) != nullptr) widget->setAttribute(Qt::WA_Hover);
  const auto* button = qobject_cast<QPushButton*>(widget);
  if (button != nullptr && button->isDefault()) widget->setProperty(kAccentedProperty, true);
}

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const {
  const LookColours& colours = CurrentColours();
  switch (element) {
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
      return DrawCheckBox(*painter, *option);
    case PE_IndicatorRadioButton:
      return DrawRadioButton(*painter, *option);
    case PE_PanelLineEdit:
      if (IsInsideField(widget)) return;
      if (const auto* frame = As<QStyleOptionFrame>(option);
          frame != nullptr && frame->lineWidth > 0) {
        return DrawField(*painter, *option);
      }
      return painter->fillRect(option->rect, option->palette.color(QPalette::Base));
    case PE_PanelButtonCommand:
      if (const auto* button = As<QStyleOptionButton>(option)) return DrawButton(*painter, *button);
      break;
    case PE_Frame:
      return DrawFrame(*painter, *option, widget);
    case PE_FrameGroupBox:
      if (const auto* frame = As<QStyleOptionFrame>(option);
          frame != nullptr && frame->features & QStyleOptionFrame::Flat) {
        return;
      }
      return DrawBox(*painter, option->rect, {colours.raised, colours.divider, kCardRadius});
    case PE_FrameFocusRect:
      return DrawFocus(*painter, *option);
    case PE_PanelItemViewItem:
      if (const auto* item = As<QStyleOptionViewItem>(option)) {
        return DrawItemPanel(*painter, *item, widget);
      }
      break;
    case PE_IndicatorArrowDown:
      return DrawArrow(*painter, option->rect, Qt::DownArrow, colours.dim);
    case PE_IndicatorArrowUp:
      return DrawArrow(*painter, option->rect, Qt::UpArrow, colours.dim);
    case PE_IndicatorArrowLeft:
      return DrawArrow(*painter, option->rect, Qt::LeftArrow, colours.dim);
    case PE_IndicatorArrowRight:
      return DrawArrow(*painter, option->rect, Qt::RightArrow, colours.dim);
    case PE_PanelMenu:
    case PE_PanelTipLabel:
      return DrawEdged(*painter, option->rect);
    case PE_PanelStatusBar:
      return DrawTopRule(*painter, option->rect);
    case PE_PanelScrollAreaCorner:
      return painter->fillRect(option->rect, PageColour(widget));
    case PE_FrameDefaultButton:
    case PE_FrameMenu:
    case PE_FrameStatusBarItem:
    case PE_FrameTabBarBase:
    case PE_FrameTabWidget:
      return;  // nothing has a box around its box
    default:
      break;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                           const QWidget* widget) const {
  // A card brings its own distances.
  const bool card = qobject_cast<const QGroupBox*>(widget) != nullptr;
  switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      return kCheckSize;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
      return kGap;
    case PM_LayoutLeftMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutBottomMargin:
      return card ? 0 : kInset;
    case PM_ListViewIconSize:
      return kIconSize;
    case PM_ScrollBarExtent:
      return kScrollBarWidth;
    case PM_ScrollBarSliderMin:
      return 3 * kScrollBarWidth;
    case PM_SplitterWidth:
    case PM_DefaultFrameWidth:
    case PM_MenuPanelWidth:
    case PM_ToolTipLabelFrameWidth:
      return 1;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
    case PM_HeaderMargin:
      return kSmallGap;
    case PM_FocusFrameHMargin:
      return kCellInset - 1;  // one more is added
    case PM_TabBarTabHSpace:
      return widget != nullptr && widget->width() < kWideTabs ? 2 * kGap : 2 * kInset;
    case PM_TabBarBaseOverlap:
    case PM_TabBarTabOverlap:
    case PM_TabBarTabShiftHorizontal:
    case PM_TabBarTabShiftVertical:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_ScrollView_ScrollBarSpacing:
      return 0;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* more) const {
  switch (hint) {
    case SH_EtchDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ComboBox_Popup:
      return 0;
    case SH_ItemView_ShowDecorationSelected:
      return 1;
    case SH_ToolTipLabel_Opacity:
      return 255;  // solid
    case SH_GroupBox_TextLabelVerticalAlignment:
      return Qt::AlignTop;
    default:
      return QProxyStyle::styleHint(hint, option, widget, more);
  }
}

}  // namespace brindle
