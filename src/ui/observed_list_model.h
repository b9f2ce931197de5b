#pragma once
// Shows an ObservedList in a list view or a combo box.

#include <QAbstractListModel>

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
  int rows_ = 0;  // as told to the views
};

}  // namespace brindle
