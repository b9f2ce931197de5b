#pragma once
// What a screen reader sees of a table of mails: two cells a row, of which the first reads the
// whole row, tells whether it is checked, and toggles it. Cells are made as they are asked for.

#include <QAccessibleWidget>
#include <QHash>

namespace brindle {

class MailTable;

// Makes tables of mails accessible; once is enough, again does no harm.
void InstallMailAccessibility();

// The place of a row's first cell among the children of the table.
int AccessibleChildOf(int tableRow);

class MailTableAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
  explicit MailTableAccessible(MailTable* table);
  ~MailTableAccessible() override;

  void* interface_cast(QAccessible::InterfaceType type) override;
  QAccessible::State state() const override;
  int childCount() const override;
  QAccessibleInterface* child(int index) const override;
  int indexOfChild(const QAccessibleInterface* cell) const override;
  QAccessibleInterface* childAt(int x, int y) const override;
  QAccessibleInterface* focusChild() const override;

  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  QAccessibleInterface* cellAt(int row, int column) const override;
  int rowCount() const override;
  int columnCount() const override;
  QString columnDescription(int column) const override;
  QString rowDescription(int row) const override;
  // Of all highlighted rows the first ones: nobody can listen to more at a time.
  QList<QAccessibleInterface*> selectedCells() const override;
  QList<int> selectedRows() const override;
  QList<int> selectedColumns() const override { return {}; }
  int selectedCellCount() const override;
  int selectedRowCount() const override;
  int selectedColumnCount() const override { return 0; }
  bool isRowSelected(int row) const override;
  bool isColumnSelected(int) const override { return false; }
  bool selectRow(int row) override;
  bool unselectRow(int row) override;
  bool selectColumn(int) override { return false; }
  bool unselectColumn(int) override { return false; }
  void modelChange(QAccessibleTableModelChangeEvent* event) override;

 private:
  MailTable& Table() const;
  void ForgetCells();

  mutable QHash<int, QAccessible::Id> cells_;
};

}  // namespace brindle
