#include "ui/mail_table.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

#include "ui/mail_list_model.h"
#include "ui/qt_text.h"
#include "ui/readable_colour.h"

namespace brindle {
namespace {

// Of every second row on a background of the user's, in percent.
constexpr int kTint = 103;
constexpr int kHalfLight = 128;
constexpr int kNumberColumnWidth = 110;
constexpr int kRowPadding = 6;
constexpr int kRowHeight = 26;

}  // namespace

MailTable::MailTable(QWidget* parent) : QTableView(parent) {
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(
      std::max(kRowHeight, fontMetrics().height() + kRowPadding));
  verticalHeader()->hide();
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  horizontalHeader()->setHighlightSections(false);
}

void MailTable::Attach(MailList& list) {
  list_ = &list;
  setModel(new MailListModel(list, this));
  setColumnWidth(MailListModel::kNumber, kNumberColumnWidth);
}

std::vector<RowRange> MailTable::HighlightedRows() const {
  std::vector<RowRange> ranges;
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    ranges.push_back({static_cast<size_t>(range.top()), static_cast<size_t>(range.bottom())});
  }
  std::sort(ranges.begin(), ranges.end(),
            [](const RowRange& a, const RowRange& b) { return a.first < b.first; });
  return ranges;
}

void MailTable::SetColours(std::optional<Colour> text, std::optional<Colour> background) {
  QPalette colours;
  if (background) {
    const QColor base = ToQColor(*background);
    colours.setColor(QPalette::Base, base);
    colours.setColor(QPalette::AlternateBase,
                     base.lightness() < kHalfLight ? base.lighter(kTint) : base.darker(kTint));
    // The theme's text is made for the theme's background.
    if (!text) text = ReadableOn(kBlack, *background);
  }
  if (text) colours.setColor(QPalette::Text, ToQColor(*text));
  setPalette(colours);
}

void MailTable::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier) {
    ToggleHighlighted();
  } else {
    QTableView::keyPressEvent(event);
  }
}

void MailTable::mouseReleaseEvent(QMouseEvent* event) {
  QTableView::mouseReleaseEvent(event);
  emit MouseUp(event->modifiers());
}

void MailTable::ToggleHighlighted() {
  const QModelIndex current = currentIndex();
  if (!current.isValid()) return;
  const bool checked = !list_->IsChecked(static_cast<size_t>(current.row()));
  const MailList::BulkChange bulk(*list_);
  for (const RowRange& range : HighlightedRows()) {
    for (size_t row = range.first; row <= range.last; ++row) list_->SetChecked(row, checked);
  }
}

}  // namespace brindle
