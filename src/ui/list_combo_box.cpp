#include "ui/list_combo_box.h"

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
  const auto remember = [this] {
    textBefore_ = currentText();
    selectedBefore_ = Selected();
  };
  // Before and after what the box itself does at such a change.
  connect(model, &QAbstractItemModel::rowsAboutToBeInserted, this, remember);
  connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, remember);
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
    KeepTextWhenRowsGo();
  });
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
  if (selectedBefore_ >= 0) return;
  setCurrentIndex(-1);
  setEditText(textBefore_);
}

void ListComboBox::KeepTextWhenRowsGo() {
  setCurrentIndex(selectedBefore_);
  setEditText(textBefore_);
}

}  // namespace brindle
