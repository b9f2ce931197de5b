#pragma once
// An editable combo box over an ObservedList. Changes of the list leave the user's text alone, and
// an item counts as selected only while the box shows its text.

#include <QComboBox>

#include "base/observed_list.h"

namespace brindle {

class ListComboBox : public QComboBox {
  Q_OBJECT

 public:
  explicit ListComboBox(QWidget* parent = nullptr);

  // `list` must live longer than this.
  void Attach(ObservedList& list);

  // The selected row, -1 for none.
  int Selected() const;
  // Selects a row, or nothing with -1.
  void Select(int row);

 signals:
  // A row was picked, by the user or by Select; -1 for none.
  void Picked(int row);

 private:
  void RememberText();
  void KeepText();
  void KeepTextWhenRowsCome();

  QString textBefore_;
  int cursorBefore_ = 0;
  int selectedBefore_ = -1;
};

}  // namespace brindle
