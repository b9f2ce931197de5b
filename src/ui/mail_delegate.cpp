#include "ui/mail_delegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

#include "ui/icons.h"
#include "ui/look.h"
#include "ui/look_paint.h"
#include "ui/mail_list_model.h"

namespace brindle {
namespace {

constexpr int kLongestTip = 500;

}  // namespace

void MailDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  option->state &= ~QStyle::State_HasFocus;  // the table draws it around the whole row
  const auto dim = [option] {
    option->palette.setColor(QPalette::Text, option->palette.color(kDimText));
  };
  if (index.column() == MailListModel::kNumber) return dim();
  const bool checked =
      index.siblingAtColumn(MailListModel::kNumber).data(Qt::CheckStateRole).toInt() == Qt::Checked;
  if (checked) option->font = Medium(option->font);
  if (!index.data(MailListModel::kRequestedRole).toBool()) return;
  if (!checked) dim();
  if (tick_.isNull()) tick_ = MakeIcon(IconName::kCheck);
  option->features |= QStyleOptionViewItem::HasDecoration;
  option->icon = tick_;
  option->decorationSize = {kIconSize, kIconSize};
}

bool MailDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                             const QStyleOptionViewItem& option, const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip || !index.isValid()) {
    return QStyledItemDelegate::helpEvent(event, view, option, index);
  }
  QStyleOptionViewItem shown = option;
  initStyleOption(&shown, index);
  const QRect place = view->visualRect(index);
  const QRect text = view->style()->subElementRect(QStyle::SE_ItemViewItemText, &shown, view);
  const bool isCut = QFontMetrics(shown.font).horizontalAdvance(shown.text) > text.width();
  // As rich text, because only that is wrapped.
  const QString tip = "<qt>" + shown.text.left(kLongestTip).toHtmlEscaped() + "</qt>";
  QToolTip::showText(event->globalPos(), isCut ? tip : QString(), view, place);
  return true;
}

}  // namespace brindle
