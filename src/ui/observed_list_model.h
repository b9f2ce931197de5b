#pragma once
// Shows an ObservedList in a list view or a combo box.

#include <QAbstractListModel>
#include <QStringList>

#include "base/observed_list.h"

namespace brindle {

class ObservedListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  // Observes `list` for as long as this lives; `list` must live longer.
  explicit ObservedListModel(ObservedList& list, QObject* parent = nullptr);
  ~ObservedListModel() override;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  void Follow(const ListChange& change);

  ObservedList& list_;
  // As told to the views. A list tells of a change when it has happened, but who hears that a row
  // is about to go must still find it.
  QStringList texts_;
};

}  // namespace brindle
