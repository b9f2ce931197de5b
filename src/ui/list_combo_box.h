#pragma once
// An editable combo box over an observed list. Changes of the list leave the user's text alone, and
// an item counts as selected only while the box shows its text. While the box is closed, the wheel
// and the keys for pages are left to what surrounds it.

#include <QComboBox>
#include <optional>

#include "ui/observed_list_model.h"

namespace brindle {

class ListComboBox : public QComboBox {
  Q_OBJECT

 public:
  explicit ListComboBox(QWidget* parent = nullptr);

  // Shows an observed list, which must live longer than this.
  template <typename List>
  void Attach(const List& list) {
    Show(*new ObservedListModel(list, this));
  }

  std::optional<size_t> Selected() const;
  void Select(std::optional<size_t> row);

 signals:
  // A row was picked, or none, by the user or by Select.
  void Picked(std::optional<size_t> row);

 protected:
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Show(ObservedListModel& model);
  void RememberText();
  void KeepText();
  void KeepTextWhenRowsCome();

  QString textBefore_;
  int cursorBefore_ = 0;
  std::optional<size_t> selectedBefore_;
};

}  // namespace brindle
