#pragma once
// A table of mails with a check box per row: lstServerList on the main window and lstResults in the
// search window. Rows given and taken are those of the list, also while a filter hides some.

#include <QElapsedTimer>
#include <QTableView>
#include <optional>
#include <vector>

#include "base/colour.h"
#include "mail/list_selection.h"
#include "mail/mail_list.h"

namespace brindle {

class MailListModel;

class MailTable : public QTableView {
  Q_OBJECT

 public:
  explicit MailTable(QWidget* parent = nullptr);

  // Shows `list`, which must live longer than this. Of rows that come, the first becomes current.
  void Attach(MailList& list);

  // Shows only the rows that `text` lets through; all for a blank one. The current row stays
  // current where it is shown.
  void Filter(const QString& text);
  const MailListModel& Model() const { return *model_; }

  // What stands in place of the rows when the list has none.
  void SetEmptyText(const QString& heading, const QString& text);

  // The highlighted rows, in order; hidden ones are never highlighted.
  std::vector<RowRange> HighlightedRows() const;
  // The same; where the current row is not among them, that row alone.
  std::vector<RowRange> ChosenRows() const;

  void CheckChosen(bool checked);
  // As lines of number, tab and title.
  void CopyChosen() const;

  // Colours of rows, where they are not the theme's.
  void SetColours(std::optional<Colour> text, std::optional<Colour> background);

 signals:
  // The mouse was released; the table has already acted on it.
  void MouseUp(Qt::KeyboardModifiers held);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& before) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers held) override;
  void keyboardSearch(const QString& typed) override;

 private:
  // Tells assistive technology, where there is any, that the checks of these rows may have changed.
  void TellChecks(int first, int last);
  // Makes the first row current, without highlighting it.
  void StartAtFirstRow();
  // Gives the chosen rows the opposite of the current row's check.
  void Toggle();
  // The table's row whose check box is at `place`; -1 where there is none.
  int BoxAt(const QPoint& place) const;
  // Goes to the next row that begins with what is being typed; false when there is none.
  bool GoToTyped();
  bool GoToRow(const std::string& lowerText, bool numbers);
  void PaintFocus();
  void PaintNothingFound();
  void PaintEmpty();

  MailList* list_ = nullptr;
  MailListModel* model_ = nullptr;
  int pressedBox_ = -1;     // row of the table
  bool keepsRows_ = false;  // the press on it left the highlight alone
  QString emptyHeading_;
  QString emptyText_;
  QString typed_;
  QElapsedTimer sinceTyped_;
};

}  // namespace brindle
