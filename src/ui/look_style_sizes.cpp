// How large the controls of LookStyle are.

#include <QDialogButtonBox>

#include "ui/look.h"
#include "ui/look_paint.h"
#include "ui/look_rects.h"
#include "ui/look_style.h"

namespace brindle {
namespace {

constexpr int kButtonInset = 14;
constexpr int kComboRoom = 38;  // the inset and the arrow
constexpr int kSpinRoom = 32;
constexpr int kTabHeight = 34;
constexpr int kHeaderHeight = 32;
constexpr int kRowHeight = 26;
constexpr int kMenuRow = 28;
constexpr int kMenuRule = 9;
constexpr int kLeastDialogButton = 76;
constexpr int kThinBar = 4;

QSize ButtonSize(const QStyleOptionButton& option, const QSize& contents, const QWidget* widget) {
  const int height = ControlHeight(option);
  if (option.text.isEmpty()) return {std::max(height, contents.width() + kGap), height};
  int width = contents.width() + 2 * kButtonInset;
  const QWidget* parent = widget == nullptr ? nullptr : widget->parentWidget();
  if (qobject_cast<const QDialogButtonBox*>(parent) != nullptr) {
    width = std::max(width, kLeastDialogButton);
  }
  return {width, height};
}

QSize MenuItemSize(const QStyleOptionMenuItem& option, const QSize& contents) {
  if (option.menuItemType == QStyleOptionMenuItem::Separator) {
    return {contents.width(), kMenuRule};
  }
  const bool column = option.menuHasCheckableItems || option.maxIconWidth > 0;
  int width = contents.width() + (column ? kMenuColumn : kMenuPadding) + kMenuPadding;
  if (option.text.contains('\t')) width += kWideGap;
  if (option.menuItemType == QStyleOptionMenuItem::SubMenu) width += kWideGap;
  const int least = option.fontMetrics.height() + kInset;
  return {width, std::max(kMenuRow, least)};
}

}  // namespace

QSize LookStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                  const QSize& contents, const QWidget* widget) const {
  switch (type) {
    case CT_PushButton:
      if (const auto* button = As<QStyleOptionButton>(option)) {
        return ButtonSize(*button, contents, widget);
      }
      break;
    case CT_LineEdit: {
      const auto* frame = As<QStyleOptionFrame>(option);
      if (frame == nullptr || frame->lineWidth == 0) return contents;
      return {contents.width() + 2 * kFieldInset, ControlHeight(*option)};
    }
    case CT_ComboBox:
      return {contents.width() + kComboRoom, ControlHeight(*option)};
    case CT_SpinBox:
      return {contents.width() + kSpinRoom, ControlHeight(*option)};
    case CT_TabBarTab:
      return {contents.width(),
              std::max({contents.height(), kTabHeight, option->fontMetrics.height() + kWideGap})};
    case CT_MenuItem:
      if (const auto* item = As<QStyleOptionMenuItem>(option)) return MenuItemSize(*item, contents);
      break;
    case CT_HeaderSection:
    case CT_ItemViewItem: {
      const int least = type == CT_HeaderSection ? kHeaderHeight : kRowHeight;
      const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
      return {size.width(), std::max(size.height(), least)};
    }
    case CT_ProgressBar:
      if (const auto* bar = As<QStyleOptionProgressBar>(option)) {
        const int text = bar->textVisible ? option->fontMetrics.height() + kSmallGap : 0;
        return {contents.width(), kThinBar + text};
      }
      break;
    default:
      break;
  }
  return QProxyStyle::sizeFromContents(type, option, contents, widget);
}

}  // namespace brindle
