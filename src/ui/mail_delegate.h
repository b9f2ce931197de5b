#pragma once
// Draws the rows of a MailTable: numbers dim, checked titles stronger, requested ones dim with a
// tick. A title that is cut has a tool tip. What a click on a check box means, the table decides.

#include <QStyledItemDelegate>

namespace brindle {

class MailDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
  bool editorEvent(QEvent*, QAbstractItemModel*, const QStyleOptionViewItem&,
                   const QModelIndex&) override {
    return false;
  }

 private:
  mutable QIcon tick_;  // made when it is first needed
};

}  // namespace brindle
