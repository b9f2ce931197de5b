#include "ui/list_combo_box.h"

#include <QCompleter>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QWheelEvent>

#include "ui/plain_line.h"

namespace brindle {
namespace {

// A line that has one gets no other from its box. One serves for all, because it costs as much as
// the box and goes at once.
QCompleter* AnyCompleter() {
  static QPointer<QCompleter> completer;
  if (completer == nullptr) completer = new QCompleter(QCoreApplication::instance());
  return completer;
}

}  // namespace

ListComboBox::ListComboBox(QWidget* parent) : QComboBox(parent) {
  // setEditable would make the list that drops down, too, long before it is asked for.
  auto* line = new QLineEdit(this);
  line->setCompleter(AnyCompleter());
  setLineEdit(line);
  setInsertPolicy(QComboBox::NoInsert);
  // It would put known items in place of what is being typed.
  setCompleter(nullptr);
  new PlainLine(*lineEdit());
  connect(this, &QComboBox::activated, this, [this](int row) { emit Picked(RowFrom(row)); });
}

void ListComboBox::Show(ObservedListModel& model) {
  // Before and after what the box itself does at such a change.
  connect(&model, &QAbstractItemModel::rowsAboutToBeInserted, this, &ListComboBox::RememberText);
  connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved, this, &ListComboBox::RememberText);
  connect(&model, &QAbstractItemModel::modelAboutToBeReset, this, &ListComboBox::RememberText);
  setModel(&model);
  setCurrentIndex(-1);
  connect(&model, &QAbstractItemModel::rowsInserted, this, &ListComboBox::KeepTextWhenRowsCome);
  connect(&model, &QAbstractItemModel::rowsRemoved, this, [this](const QModelIndex&, int first) {
    if (selectedBefore_ == RowFrom(first)) {
      textBefore_.clear();
      selectedBefore_.reset();
    } else if (selectedBefore_ > RowFrom(first)) {
      --*selectedBefore_;
    }
    KeepText();
  });
  connect(&model, &QAbstractItemModel::modelReset, this, [this] {
    if (selectedBefore_) textBefore_.clear();
    selectedBefore_.reset();
    KeepText();
  });
}

void ListComboBox::RememberText() {
  textBefore_ = currentText();
  cursorBefore_ = lineEdit()->cursorPosition();
  selectedBefore_ = Selected();
}

void ListComboBox::KeepText() {
  setCurrentIndex(ToInt(selectedBefore_));
  // Text that was not lost keeps its cursor and its marked part too.
  if (currentText() == textBefore_) return;
  setEditText(textBefore_);
  lineEdit()->setCursorPosition(cursorBefore_);
}

std::optional<size_t> ListComboBox::Selected() const {
  const int row = currentIndex();
  return itemText(row) == currentText() ? RowFrom(row) : std::nullopt;
}

void ListComboBox::Select(std::optional<size_t> row) {
  setCurrentIndex(ToInt(row));
  if (!row) setEditText("");
  emit Picked(row);
}

void ListComboBox::wheelEvent(QWheelEvent* event) { event->ignore(); }

void ListComboBox::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown) {
    event->ignore();
  } else {
    QComboBox::keyPressEvent(event);
  }
}

void ListComboBox::KeepTextWhenRowsCome() {
  if (!selectedBefore_) KeepText();
}

}  // namespace brindle
