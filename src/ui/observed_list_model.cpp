#include "ui/observed_list_model.h"

#include "ui/qt_text.h"

namespace brindle {

ObservedListModel::ObservedListModel(ObservedList& list, QObject* parent)
    : QAbstractListModel(parent), list_(list), rows_(static_cast<int>(list.Size())) {
  list_.Observe([this](const ListChange& change) { Follow(change); });
}

ObservedListModel::~ObservedListModel() { list_.Observe({}); }

int ObservedListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

QVariant ObservedListModel::data(const QModelIndex& index, int role) const {
  const auto row = static_cast<size_t>(index.row());
  const bool text = role == Qt::DisplayRole || role == Qt::EditRole;
  if (!index.isValid() || !text || row >= list_.Size()) return {};
  return ToQString(list_.Items()[row]);
}

void ObservedListModel::Follow(const ListChange& change) {
  const int row = static_cast<int>(change.index);
  switch (change.what) {
    case ListChange::What::kInserted:
      beginInsertRows({}, row, row);
      ++rows_;
      endInsertRows();
      break;
    case ListChange::What::kRemoved:
      beginRemoveRows({}, row, row);
      --rows_;
      endRemoveRows();
      break;
    case ListChange::What::kCleared:
      beginResetModel();
      rows_ = 0;
      endResetModel();
      break;
  }
}

}  // namespace brindle
