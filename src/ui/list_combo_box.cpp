#include "ui/list_combo_box.h"

#include <QLineEdit>

#include "ui/observed_list_model.h"

namespace brindle {

ListComboBox::ListComboBox(QWidget* parent) : QComboBox(parent) {
  setEditable(true);
  setInsertPolicy(QComboBox::NoInsert);
  // It would put known items in place of what is being typed.
  setCompleter(nullptr);
  connect(this, &QComboBox::activated, this, &ListComboBox::Picked);
}

void ListComboBox::Attach(ObservedList& list) {
  auto* model = new ObservedListModel(list, this);
  // Before and after what the box itself does at such a change.
  connect(model, &QAbstractItemModel::rowsAboutToBeInserted, this, &ListComboBox::RememberText);
  connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, &ListComboBox::RememberText);
  connect(model, &QAbstractItemModel::modelAboutToBeReset, this, &ListComboBox::RememberText);
  setModel(model);
  setCurrentIndex(-1);
  connect(model, &QAbstractItemModel::rowsInserted, this, &ListComboBox::KeepTextWhenRowsCome);
  connect(model, &QAbstractItemModel::rowsRemoved, this, [this](const QModelIndex&, int first) {
    if (selectedBefore_ == first) {
      textBefore_.clear();
      selectedBefore_ = -1;
    } else if (selectedBefore_ > first) {
      --selectedBefore_;
    }
    KeepText();
  });
  connect(model, &QAbstractItemModel::modelReset, this, [this] {
    if (selectedBefore_ >= 0) textBefore_.clear();
    selectedBefore_ = -1;
    KeepText();
  });
}

void ListComboBox::RememberText() {
  textBefore_ = currentText();
  cursorBefore_ = lineEdit()->cursorPosition();
  selectedBefore_ = Selected();
}

void ListComboBox::KeepText() {
  setCurrentIndex(selectedBefore_);
  // Text that was not lost keeps its cursor and its marked part too.
  if (currentText() == textBefore_) return;
  setEditText(textBefore_);
  lineEdit()->setCursorPosition(cursorBefore_);
}

int ListComboBox::Selected() const {
  const int row = currentIndex();
  return row >= 0 && itemText(row) == currentText() ? row : -1;
}

void ListComboBox::Select(int row) {
  setCurrentIndex(row);
  if (row < 0) setEditText("");
  emit Picked(row);
}

void ListComboBox::KeepTextWhenRowsCome() {
  if (selectedBefore_ < 0) KeepText();
}

}  // namespace brindle
