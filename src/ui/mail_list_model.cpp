#include "ui/mail_list_model.h"

#include <QElapsedTimer>
#include <QTimerEvent>
#include <algorithm>
#include <utility>

#include "base/text.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

// More than any screen shows; drawing a title of megabytes would freeze the window.
constexpr size_t kLongestShownText = 2000;

// Twice that and drawing the first rows fit into a frame.
constexpr qint64 kFilterMilliseconds = 4;
// A millisecond's worth.
constexpr size_t kFilterBytes = 2U << 20U;

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

void MailListModel::Filter(const QString& text, size_t least) {
  const std::string wanted = text.toStdString();
  beginResetModel();
  StopFilter();
  shown_.reset();
  if (!IsBlank(wanted)) {
    filter_.emplace(list_, wanted);
    LookOn(least);
    shown_ = std::exchange(found_, {});
  }
  rows_ = static_cast<int>(shown_ ? shown_->size() : list_.Size());
  if (filter_ && filter_->IsDone()) StopFilter();
  endResetModel();
  if (filter_) timer_.start(0, this);
}

void MailListModel::LookOn(size_t least) {
  QElapsedTimer time;
  time.start();
  while (!filter_->IsDone() &&
         (filter_->NextRow() <= least || time.elapsed() < kFilterMilliseconds)) {
    const std::vector<std::uint32_t> more = filter_->Next(kFilterBytes);
    found_.insert(found_.end(), more.begin(), more.end());
  }
}

void MailListModel::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) return QAbstractTableModel::timerEvent(event);
  LookOn(0);
  if (filter_->IsDone()) ShowFound();
}

void MailListModel::FinishFilter() {
  if (!filter_) return;
  LookOn(list_.Size());
  ShowFound();
}

// At once, because telling the view takes as long as it has rows.
void MailListModel::ShowFound() {
  const std::vector<std::uint32_t> found = std::exchange(found_, {});
  StopFilter();
  if (!found.empty()) {
    const int added = static_cast<int>(found.size());
    beginInsertRows({}, rows_, rows_ + added - 1);
    shown_->insert(shown_->end(), found.begin(), found.end());
    rows_ += added;
    endInsertRows();
  }
  emit Filtered();
}

void MailListModel::StopFilter() {
  filter_.reset();
  found_.clear();
  timer_.stop();
}

int MailListModel::TableRow(size_t listRow) const {
  if (!shown_) return static_cast<int>(listRow);
  const auto found = std::lower_bound(shown_->begin(), shown_->end(), listRow);
  const bool isShown = found != shown_->end() && *found == listRow;
  return isShown ? static_cast<int>(found - shown_->begin()) : -1;
}

QVariant MailListModel::data(const QModelIndex& index, int role) const {
  // While rows are being replaced, the table still has those that were.
  if (!index.isValid() || index.row() >= rows_) return {};
  const size_t row = ListRow(index.row());
  if (row >= list_.Size()) return {};
  const bool number = index.column() == kNumber;
  if (role == Qt::DisplayRole) return ShownText(number ? list_.Number(row) : list_.Title(row));
  if (role == Qt::CheckStateRole && number) {
    return list_.IsChecked(row) ? Qt::Checked : Qt::Unchecked;
  }
  if (role == kRequestedRole) return list_.IsRequested(row);
  return {};
}

bool MailListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || index.column() != kNumber || index.row() >= rows_) return false;
  const size_t row = ListRow(index.row());
  if (row >= list_.Size()) return false;
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

void MailListModel::RowsAboutToBeReplaced() {
  StopFilter();
  beginResetModel();
}

void MailListModel::RowsReplaced() {
  shown_.reset();
  rows_ = static_cast<int>(list_.Size());
  endResetModel();
}

void MailListModel::CheckChanged(size_t row) {
  const int shown = TableRow(row);
  TellChecked(shown, shown);
}

void MailListModel::ChecksChanged() { TellChecked(0, rows_ - 1); }

void MailListModel::TellChecked(int first, int last) {
  if (first >= 0 && last >= first) {
    emit dataChanged(index(first, kNumber), index(last, kTitle), {Qt::CheckStateRole});
  }
  emit headerDataChanged(Qt::Horizontal, kTitle, kTitle);
}

}  // namespace brindle
