#pragma once
// A table of mails with a check box per row: lstServerList on the main window and lstResults in the
// search window.

#include <QTableView>
#include <optional>
#include <vector>

#include "base/colour.h"
#include "mail/list_selection.h"
#include "mail/mail_list.h"

namespace brindle {

class MailTable : public QTableView {
  Q_OBJECT

 public:
  explicit MailTable(QWidget* parent = nullptr);

  // Shows `list`, which must live longer than this.
  void Attach(MailList& list);

  // The highlighted rows, in order.
  std::vector<RowRange> HighlightedRows() const;

  // Colours of rows, where they are not the theme's.
  void SetColours(std::optional<Colour> text, std::optional<Colour> background);

 signals:
  // The mouse was released; the table has already acted on it.
  void MouseUp(Qt::KeyboardModifiers held);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  // Gives all highlighted rows the opposite of the current row's check.
  void ToggleHighlighted();

  MailList* list_ = nullptr;
};

}  // namespace brindle
