// Keys and mouse of the table of mails.

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMouseEvent>
#include <utility>

#include "base/text.h"
#include "ui/mail_list_model.h"
#include "ui/mail_table.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

// What is typed later begins anew.
constexpr int kTypingPauseMilliseconds = 1000;
// Beside a check box, still on it.
constexpr int kBoxMargin = 3;

}  // namespace

void MailTable::keyPressEvent(QKeyEvent* event) {
  const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == 0;
  if (event->matches(QKeySequence::Copy)) return CopyChosen();
  if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) return Toggle();
  if (plain && event->key() == Qt::Key_Space) {
    // In the middle of typing, a blank that some title has is part of what is typed.
    const bool typing =
        !typed_.isEmpty() && sinceTyped_.elapsed() < QApplication::keyboardInputInterval();
    typed_ += ' ';
    if (typing && GoToTyped()) return;
    typed_.clear();
    return Toggle();
  }
  QTableView::keyPressEvent(event);
}

QModelIndex MailTable::moveCursor(CursorAction action, Qt::KeyboardModifiers held) {
  typed_.clear();
  switch (action) {
    case MoveHome:
    case MoveEnd:
      return QTableView::moveCursor(action, held | Qt::ControlModifier)
          .siblingAtColumn(MailListModel::kNumber);
    case MoveLeft:
    case MoveRight:
      return currentIndex();  // rows are what one moves among
    default:
      return QTableView::moveCursor(action, held);
  }
}

void MailTable::keyboardSearch(const QString& typed) {
  if (sinceTyped_.isValid() && sinceTyped_.elapsed() > kTypingPauseMilliseconds) typed_.clear();
  typed_ += typed;
  GoToTyped();
}

bool MailTable::GoToTyped() {
  sinceTyped_.start();
  const std::string text = LowerCase(typed_.toStdString());
  return (IsAllDigits(text) && GoToRow(text, true)) || GoToRow(text, false);
}

bool MailTable::GoToRow(const std::string& lowerText, bool numbers) {
  const int rows = model_ == nullptr ? 0 : model_->rowCount();
  // A first character leads on from the current row; more of them may still mean it.
  const int start = std::max(0, currentIndex().row()) + (typed_.size() == 1 ? 1 : 0);
  for (int step = 0; step < rows; ++step) {
    const int row = (start + step) % rows;
    const size_t listRow = model_->ListRow(row);
    const std::string_view text = numbers ? list_->Number(listRow) : list_->Title(listRow);
    if (!StartsIgnoringCase(text, lowerText)) continue;
    setCurrentIndex(model_->index(row, MailListModel::kNumber));
    return true;
  }
  return false;
}

int MailTable::BoxAt(const QPoint& place) const {
  const QModelIndex index = indexAt(place);
  if (!index.isValid() || index.column() != MailListModel::kNumber) return -1;
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.rect = visualRect(index);
  option.features |= QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
  const QRect box = style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this);
  return place.x() <= box.right() + kBoxMargin ? index.row() : -1;
}

void MailTable::mousePressEvent(QMouseEvent* event) {
  pressedBox_ = event->button() == Qt::LeftButton ? BoxAt(event->pos()) : -1;
  const QModelIndex pressed =
      pressedBox_ < 0 ? QModelIndex() : model_->index(pressedBox_, MailListModel::kNumber);
  // All highlighted rows are meant, so they stay highlighted.
  keepsRows_ = pressed.isValid() && event->modifiers() == Qt::NoModifier &&
               selectionModel()->isSelected(pressed);
  if (keepsRows_) {
    selectionModel()->setCurrentIndex(pressed, QItemSelectionModel::NoUpdate);
  } else {
    QTableView::mousePressEvent(event);
  }
}

void MailTable::mouseMoveEvent(QMouseEvent* event) {
  if (!keepsRows_) QTableView::mouseMoveEvent(event);
}

void MailTable::mouseReleaseEvent(QMouseEvent* event) {
  const int box = std::exchange(pressedBox_, -1);
  if (!std::exchange(keepsRows_, false)) QTableView::mouseReleaseEvent(event);
  if (box >= 0 && box == BoxAt(event->pos())) {
    const size_t row = model_->ListRow(box);
    // With Shift nothing is unchecked.
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    if (event->modifiers() == Qt::NoModifier) {
      Toggle();
    } else {
      list_->SetChecked(row, shift || !list_->IsChecked(row));
    }
  }
  emit MouseUp(event->modifiers());
}

void MailTable::mouseDoubleClickEvent(QMouseEvent* event) {
  if (BoxAt(event->pos()) >= 0) return mousePressEvent(event);
  QTableView::mouseDoubleClickEvent(event);
  const bool plain = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier;
  if (plain && indexAt(event->pos()).isValid()) Toggle();
}

void MailTable::Toggle() {
  const QModelIndex current = currentIndex();
  if (!current.isValid()) return;
  const size_t row = model_->ListRow(current.row());
  CheckChosen(!list_->IsChecked(row));
}

void MailTable::CheckChosen(bool checked) {
  const std::vector<RowRange> rows = ChosenRows();
  if (rows.size() == 1 && rows[0].first == rows[0].last) {
    return list_->SetChecked(rows[0].first, checked);
  }
  const MailList::BulkChange bulk(*list_);
  for (const RowRange& range : rows) {
    if (checked) {
      list_->CheckRange(range.first, range.last);
    } else {
      list_->UncheckRange(range.first, range.last);
    }
  }
}

void MailTable::CopyChosen() const {
  std::string text;
  for (const RowRange& range : ChosenRows()) {
    for (size_t row = range.first; row <= range.last; ++row) {
      text.append(list_->Number(row)).append("\t").append(list_->Title(row)).append("\n");
    }
  }
  if (!text.empty()) QGuiApplication::clipboard()->setText(ToQString(text).remove(QChar::Null));
}

}  // namespace brindle
