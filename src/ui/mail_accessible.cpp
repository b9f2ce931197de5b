#include "ui/mail_accessible.h"

#include <QHeaderView>
#include <QPointer>
#include <algorithm>

#include "ui/mail_list_model.h"
#include "ui/mail_table.h"

namespace brindle {
namespace {

constexpr int kMostSelected = 1000;

class MailCell : public QAccessibleInterface,
                 public QAccessibleTableCellInterface,
                 public QAccessibleActionInterface {
 public:
  MailCell(MailTable& table, int row, int column) : table_(&table), row_(row), column_(column) {}

  bool isValid() const override { return table_ != nullptr && Index().isValid(); }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override { return table_->window()->windowHandle(); }
  QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(table_);
  }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QAccessible::Role role() const override { return QAccessible::Cell; }

  QString text(QAccessible::Text kind) const override {
    const QModelIndex index = Index();
    const QString title = index.siblingAtColumn(MailListModel::kTitle).data().toString();
    if (kind == QAccessible::Description) {
      return index.data(MailListModel::kRequestedRole).toBool() ? "requested" : QString();
    }
    if (kind != QAccessible::Name && kind != QAccessible::Value) return {};
    return IsNumber() ? index.data().toString() + " " + title : title;
  }
  void setText(QAccessible::Text, const QString&) override {}

  QRect rect() const override {
    const QRect place = table_->visualRect(Index()) & table_->viewport()->rect();
    return place.isEmpty() ? QRect()
                           : QRect(table_->viewport()->mapToGlobal(place.topLeft()), place.size());
  }

  QAccessible::State state() const override {
    QAccessible::State state;
    if (!isValid()) {
      state.invalid = true;
      return state;
    }
    state.selectable = true;
    state.focusable = true;
    state.multiSelectable = true;
    state.selected = isSelected();
    state.focused = table_->hasFocus() && table_->currentIndex().row() == row_ && IsNumber();
    state.disabled = !table_->isEnabled();
    state.checkable = IsNumber();
    state.checked = IsNumber() && Index().data(Qt::CheckStateRole).toInt() == Qt::Checked;
    state.offscreen = rect().isEmpty();
    state.invisible = !table_->isVisible();
    return state;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TableCellInterface) {
      return static_cast<QAccessibleTableCellInterface*>(this);
    }
    if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
  }

  bool isSelected() const override { return table_->selectionModel()->isSelected(Index()); }
  QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
  QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
  int columnIndex() const override { return column_; }
  int rowIndex() const override { return row_; }
  int columnExtent() const override { return 1; }
  int rowExtent() const override { return 1; }
  QAccessibleInterface* table() const override { return parent(); }

  QStringList actionNames() const override { return {toggleAction(), setFocusAction()}; }
  QStringList keyBindingsForAction(const QString& action) const override {
    return action == toggleAction() ? QStringList("Space") : QStringList();
  }
  void doAction(const QString& action) override {
    if (!isValid()) return;
    if (action == setFocusAction()) {
      table_->setFocus(Qt::OtherFocusReason);
      table_->setCurrentIndex(NumberIndex());
    } else if (action == toggleAction()) {
      const bool checked = NumberIndex().data(Qt::CheckStateRole).toInt() == Qt::Checked;
      table_->model()->setData(NumberIndex(), checked ? Qt::Unchecked : Qt::Checked,
                               Qt::CheckStateRole);
    }
  }

 private:
  bool IsNumber() const { return column_ == MailListModel::kNumber; }
  QModelIndex Index() const { return table_->model()->index(row_, column_); }
  QModelIndex NumberIndex() const { return Index().siblingAtColumn(MailListModel::kNumber); }

  QPointer<MailTable> table_;
  int row_;
  int column_;
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
  auto* table = qobject_cast<MailTable*>(object);
  return table == nullptr ? nullptr : new MailTableAccessible(table);
}

}  // namespace

void InstallMailAccessibility() {
  static const bool kInstalled = [] {
    QAccessible::installFactory(MakeAccessible);
    return true;
  }();
  static_cast<void>(kInstalled);
}

int AccessibleChildOf(int tableRow) { return tableRow * MailListModel::kColumns; }

MailTableAccessible::MailTableAccessible(MailTable* table)
    : QAccessibleWidget(table, QAccessible::Table) {}

MailTableAccessible::~MailTableAccessible() { ForgetCells(); }

MailTable& MailTableAccessible::Table() const { return *static_cast<MailTable*>(object()); }

void MailTableAccessible::ForgetCells() {
  for (const QAccessible::Id id : std::exchange(cells_, {})) {
    QAccessible::deleteAccessibleInterface(id);
  }
}

// Rows that were there may mean others now.
void MailTableAccessible::modelChange(QAccessibleTableModelChangeEvent* event) {
  if (event->modelChangeType() != QAccessibleTableModelChangeEvent::DataChanged) ForgetCells();
}

void* MailTableAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TableInterface) return static_cast<QAccessibleTableInterface*>(this);
  return QAccessibleWidget::interface_cast(type);
}

QAccessible::State MailTableAccessible::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  state.multiSelectable = true;
  return state;
}

// It may be asked before it has a list.
int MailTableAccessible::rowCount() const {
  return Table().model() == nullptr ? 0 : Table().model()->rowCount();
}

int MailTableAccessible::columnCount() const { return MailListModel::kColumns; }
int MailTableAccessible::childCount() const { return rowCount() * columnCount(); }

QAccessibleInterface* MailTableAccessible::child(int index) const {
  if (index < 0 || index >= childCount()) return nullptr;
  if (const auto known = cells_.constFind(index); known != cells_.constEnd()) {
    return QAccessible::accessibleInterface(*known);
  }
  auto* cell = new MailCell(Table(), index / columnCount(), index % columnCount());
  cells_.insert(index, QAccessible::registerAccessibleInterface(cell));
  return cell;
}

int MailTableAccessible::indexOfChild(const QAccessibleInterface* cell) const {
  auto* place = const_cast<QAccessibleInterface*>(cell)->tableCellInterface();
  return place == nullptr ? -1 : place->rowIndex() * columnCount() + place->columnIndex();
}

QAccessibleInterface* MailTableAccessible::childAt(int x, int y) const {
  const QPoint place = Table().viewport()->mapFromGlobal(QPoint(x, y));
  const QModelIndex index =
      Table().viewport()->rect().contains(place) ? Table().indexAt(place) : QModelIndex();
  return index.isValid() ? cellAt(index.row(), index.column()) : nullptr;
}

QAccessibleInterface* MailTableAccessible::focusChild() const {
  const QModelIndex current = Table().currentIndex();
  return Table().hasFocus() && current.isValid() ? child(AccessibleChildOf(current.row()))
                                                 : nullptr;
}

QAccessibleInterface* MailTableAccessible::cellAt(int row, int column) const {
  const bool isThere = row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
  return isThere ? child(row * columnCount() + column) : nullptr;
}

QString MailTableAccessible::columnDescription(int column) const {
  if (Table().model() == nullptr) return {};
  return Table().model()->headerData(column, Qt::Horizontal).toString();
}

QString MailTableAccessible::rowDescription(int row) const {
  const QAccessibleInterface* cell = cellAt(row, MailListModel::kNumber);
  return cell == nullptr ? QString() : cell->text(QAccessible::Name);
}

QList<int> MailTableAccessible::selectedRows() const {
  QList<int> rows;
  if (rowCount() == 0) return rows;
  for (const QItemSelectionRange& range : Table().selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom() && rows.size() < kMostSelected; ++row) {
      rows << row;
    }
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

QList<QAccessibleInterface*> MailTableAccessible::selectedCells() const {
  QList<QAccessibleInterface*> cells;
  for (const int row : selectedRows()) cells << cellAt(row, 0) << cellAt(row, 1);
  return cells;
}

int MailTableAccessible::selectedRowCount() const {
  int rows = 0;
  if (rowCount() == 0) return rows;
  for (const QItemSelectionRange& range : Table().selectionModel()->selection()) {
    rows += range.height();
  }
  return rows;
}

int MailTableAccessible::selectedCellCount() const { return selectedRowCount() * columnCount(); }

bool MailTableAccessible::isRowSelected(int row) const {
  return row < rowCount() && Table().selectionModel()->isSelected(Table().model()->index(row, 0));
}

bool MailTableAccessible::selectRow(int row) {
  if (row < 0 || row >= rowCount()) return false;
  const QModelIndex index = Table().model()->index(row, 0);
  Table().selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
  return true;
}

bool MailTableAccessible::unselectRow(int row) {
  if (row < 0 || row >= rowCount()) return false;
  const QModelIndex index = Table().model()->index(row, 0);
  Table().selectionModel()->select(index,
                                   QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
  return true;
}

}  // namespace brindle
