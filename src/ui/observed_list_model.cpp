#include "ui/observed_list_model.h"

#include "ui/qt_text.h"

namespace brindle {

ObservedListModel::ObservedListModel(ObservedList& list, QObject* parent)
    : QAbstractListModel(parent), list_(list) {
  for (const std::string& item : list_.Items()) texts_ << ToQString(item);
  list_.Observe([this](const ListChange& change) { Follow(change); });
}

ObservedListModel::~ObservedListModel() { list_.Observe({}); }

int ObservedListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(texts_.size());
}

QVariant ObservedListModel::data(const QModelIndex& index, int role) const {
  const bool text = role == Qt::DisplayRole || role == Qt::EditRole;
  if (!index.isValid() || !text || index.row() >= texts_.size()) return {};
  return texts_[index.row()];
}

void ObservedListModel::Follow(const ListChange& change) {
  const int row = static_cast<int>(change.index);
  switch (change.what) {
    case ListChange::What::kInserted:
      beginInsertRows({}, row, row);
      texts_.insert(row, ToQString(list_.Items()[change.index]));
      endInsertRows();
      break;
    case ListChange::What::kRemoved:
      beginRemoveRows({}, row, row);
      texts_.removeAt(row);
      endRemoveRows();
      break;
    case ListChange::What::kCleared:
      beginResetModel();
      texts_.clear();
      endResetModel();
      break;
  }
}

}  // namespace brindle
