#pragma once
// Shows a MailList in a table of two columns, the number with its check box and the title under the
// list's header. Rows are read from the list as they are drawn; nothing is copied.

#include <QAbstractTableModel>

#include "mail/mail_list.h"

namespace brindle {

class MailListModel : public QAbstractTableModel, private MailListObserver {
  Q_OBJECT

 public:
  enum Column { kNumber = 0, kTitle = 1, kColumns = 2 };

  // Observes `list` for as long as this lives; `list` must live longer.
  explicit MailListModel(MailList& list, QObject* parent = nullptr);
  ~MailListModel() override;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  void RowsAboutToBeReplaced() override { beginResetModel(); }
  void RowsReplaced() override;
  void CheckChanged(size_t row) override;
  void ChecksChanged() override;
  void TellChecked(int first, int last);

  MailList& list_;
  int rows_ = 0;  // as told to the view
};

}  // namespace brindle
