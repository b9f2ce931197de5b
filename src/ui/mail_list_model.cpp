#include "ui/mail_list_model.h"

#include "ui/qt_text.h"

namespace brindle {
namespace {

// More than any screen shows; drawing a title of megabytes would freeze the window.
constexpr size_t kLongestShownText = 2000;

QString ShownText(std::string_view text) {
  QString shown = ToQString(text.substr(0, kLongestShownText));
  return shown.remove(QChar::Null);
}

}  // namespace

MailListModel::MailListModel(MailList& list, QObject* parent)
    : QAbstractTableModel(parent), list_(list), rows_(static_cast<int>(list.Size())) {
  list_.Observe(*this);
}

MailListModel::~MailListModel() { list_.StopObserving(*this); }

int MailListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int MailListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QVariant MailListModel::data(const QModelIndex& index, int role) const {
  const auto row = static_cast<size_t>(index.row());
  if (!index.isValid() || row >= list_.Size()) return {};
  const bool number = index.column() == kNumber;
  if (role == Qt::DisplayRole) return ShownText(number ? list_.Number(row) : list_.Title(row));
  if (role == Qt::CheckStateRole && number) {
    return list_.IsChecked(row) ? Qt::Checked : Qt::Unchecked;
  }
  return {};
}

bool MailListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  const auto row = static_cast<size_t>(index.row());
  if (role != Qt::CheckStateRole || index.column() != kNumber || row >= list_.Size()) return false;
  list_.SetChecked(row, value.toInt() == Qt::Checked);
  return true;
}

QVariant MailListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return section == kNumber ? QString("Mail #") : ToQString(list_.TitleHeader());
}

Qt::ItemFlags MailListModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags always = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
  return index.column() == kNumber ? always | Qt::ItemIsUserCheckable : always;
}

void MailListModel::RowsReplaced() {
  rows_ = static_cast<int>(list_.Size());
  endResetModel();
}

void MailListModel::CheckChanged(size_t row) {
  TellChecked(static_cast<int>(row), static_cast<int>(row));
}

void MailListModel::ChecksChanged() { TellChecked(0, rows_ - 1); }

void MailListModel::TellChecked(int first, int last) {
  emit dataChanged(index(first, kNumber), index(last, kNumber), {Qt::CheckStateRole});
  emit headerDataChanged(Qt::Horizontal, kTitle, kTitle);
}

}  // namespace brindle
