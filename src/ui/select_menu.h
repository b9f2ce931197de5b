#pragma once
// The Select menu. It serves two lists: the mail list of the main window, and the results of a
// search, for which alone "All" is offered.

#include <QMenu>
#include <QPointer>
#include <QPushButton>

#include "mail/list_selection.h"

namespace brindle {

class SelectMenu : public QMenu {
  Q_OBJECT

 public:
  explicit SelectMenu(QWidget* parent);

  // Both must live longer than this.
  void Attach(ListSelection& selection, MailList& main);

  // Pops up under a button of the main window.
  void ServeMain(QPushButton& button);
  // Pops up under a button of the search window. Once the window is gone, its list is no longer
  // worked on.
  void ServeResults(MailList& results, QPushButton& button);

 private:
  // The list that an item works on, when it is chosen: the results while "All" is offered; null
  // when their window is gone.
  MailList* Target() const;

  MailList* main_ = nullptr;
  MailList* results_ = nullptr;
  QPointer<const QWidget> resultsButton_;
  QAction* mnuSelectAll_ = nullptr;
};

}  // namespace brindle
