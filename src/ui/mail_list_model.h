#pragma once
// Shows a MailList in a table of two columns, the number with its check box and the title under the
// list's header. Rows are read from the list as they are drawn; nothing is copied. A filter leaves
// out rows of the table, never of the list; the list's next rows come without one.

#include <QAbstractTableModel>
#include <QBasicTimer>
#include <cstdint>
#include <optional>
#include <vector>

#include "mail/mail_list.h"
#include "mail/title_search.h"

namespace brindle {

class MailListModel : public QAbstractTableModel, private MailListObserver {
  Q_OBJECT

 public:
  enum Column { kNumber = 0, kTitle = 1, kColumns = 2 };

  // Of the data: whether the row was requested.
  static constexpr int kRequestedRole = Qt::UserRole;

  // Observes `list` for as long as this lives; `list` must live longer.
  explicit MailListModel(MailList& list, QObject* parent = nullptr);
  ~MailListModel() override;

  // Shows only the rows that `text` lets through (see RowFilter); all for a blank one. Of a long
  // list the first rows are looked at at once, those up to the list's row `least` among them; while
  // the window goes on the others are, and come together.
  void Filter(const QString& text, size_t least);
  bool IsFiltered() const { return shown_.has_value(); }
  // True while rows are still to come; the signal Filtered tells that all have.
  bool IsFiltering() const { return filter_.has_value(); }
  // Waits for them.
  void FinishFilter();

  // The row of the list behind a row of the table, and the other way round: -1 where it is hidden.
  size_t ListRow(int tableRow) const {
    const auto row = static_cast<size_t>(tableRow);
    return shown_ ? (*shown_)[row] : row;
  }
  int TableRow(size_t listRow) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 signals:
  void Filtered();

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  void RowsAboutToBeReplaced() override;
  void RowsReplaced() override;
  void CheckChanged(size_t row) override;
  void ChecksChanged() override;
  void TellChecked(int first, int last);
  // Looks on for some milliseconds, and at least up to the list's row `least`.
  void LookOn(size_t least);
  void ShowFound();
  void StopFilter();

  MailList& list_;
  std::optional<std::vector<std::uint32_t>> shown_;  // by the filter
  int rows_ = 0;                                     // as told to the view
  std::optional<RowFilter> filter_;                  // until it has looked at all rows
  std::vector<std::uint32_t> found_;                 // by it, and not shown yet
  QBasicTimer timer_;
};

}  // namespace brindle
