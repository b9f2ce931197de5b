#include "ui/observed_list_model.h"

#include <utility>

#include "ui/qt_text.h"

namespace brindle {

ObservedListModel::ObservedListModel(const Observed& list, TextOfRow textOfRow, size_t rows,
                                     QObject* parent)
    : QAbstractListModel(parent),
      list_(list),
      textOfRow_(std::move(textOfRow)),
      rows_(static_cast<int>(rows)) {
  list_.Observe([this](const ListChange& change) {
    change.when == ListChange::When::kBefore ? Before(change) : After(change);
  });
}

ObservedListModel::~ObservedListModel() { list_.Observe({}); }

int ObservedListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

QVariant ObservedListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_) return {};
  const std::string_view text = textOfRow_(static_cast<size_t>(index.row()));
  if (role == Qt::DisplayRole || role == Qt::EditRole) return ToQString(text);
  return look_ ? look_(text, role) : QVariant();
}

void ObservedListModel::Refresh() {
  if (rows_ > 0) emit dataChanged(index(0), index(rows_ - 1));
}

void ObservedListModel::Before(const ListChange& change) {
  const int row = static_cast<int>(change.index);
  switch (change.what) {
    case ListChange::What::kInsert:
      return beginInsertRows({}, row, row);
    case ListChange::What::kRemove:
      return beginRemoveRows({}, row, row);
    case ListChange::What::kReplace:
      return;
    case ListChange::What::kClear:
      return beginResetModel();
  }
}

void ObservedListModel::After(const ListChange& change) {
  const QModelIndex replaced = index(static_cast<int>(change.index));
  switch (change.what) {
    case ListChange::What::kInsert:
      ++rows_;
      return endInsertRows();
    case ListChange::What::kRemove:
      --rows_;
      return endRemoveRows();
    case ListChange::What::kReplace:
      emit dataChanged(replaced, replaced);
      return;
    case ListChange::What::kClear:
      rows_ = 0;
      return endResetModel();
  }
}

void ShowIn(QAbstractItemView& view, ObservedListModel& model) {
  // Heard before the view does, which would select a neighbour.
  QObject::connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved, &view,
                   [&view](const QModelIndex&, int row) {
                     if (view.currentIndex().row() == row) view.selectionModel()->clear();
                   });
  view.setModel(&model);
}

}  // namespace brindle
