#include "ui/mail_table.h"

#include <QAccessible>
#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <algorithm>

#include "ui/icons.h"
#include "ui/look.h"
#include "ui/look_paint.h"
#include "ui/mail_accessible.h"
#include "ui/mail_delegate.h"
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
constexpr int kEmptyIconSize = 56;

// Between two colours, nearer to the first.
QColor Mixed(const QColor& first, const QColor& second) {
  const auto mix = [](int a, int b) { return (2 * a + b) / 3; };
  return {mix(first.red(), second.red()), mix(first.green(), second.green()),
          mix(first.blue(), second.blue())};
}

}  // namespace

MailTable::MailTable(QWidget* parent) : QTableView(parent) {
  InstallMailAccessibility();  // before anybody asks
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(
      std::max(kRowHeight, fontMetrics().height() + kRowPadding));
  verticalHeader()->hide();
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  horizontalHeader()->setHighlightSections(false);
  setItemDelegate(new MailDelegate(this));
}

void MailTable::Attach(MailList& list) {
  list_ = &list;
  model_ = new MailListModel(list, this);
  setModel(model_);
  setColumnWidth(MailListModel::kNumber, kNumberColumnWidth);
  connect(model_, &MailListModel::Filtered, viewport(), qOverload<>(&QWidget::update));
  // After the view's own, which forgets the current row.
  connect(model_, &QAbstractItemModel::modelReset, this, &MailTable::StartAtFirstRow);
  connect(model_, &QAbstractItemModel::dataChanged, this,
          [this](const QModelIndex& first, const QModelIndex& last) {
            TellChecks(first.row(), last.row());
          });
  StartAtFirstRow();
}

void MailTable::StartAtFirstRow() {
  const QModelIndex first = model_->index(0, MailListModel::kNumber);
  if (first.isValid()) selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
}

void MailTable::Filter(const QString& text) {
  const QModelIndex before = currentIndex();
  const size_t row = before.isValid() ? model_->ListRow(before.row()) : 0;
  const bool highlighted = before.isValid() && selectionModel()->isSelected(before);
  model_->Filter(text, row);
  const int now = model_->rowCount() == 0 ? -1 : model_->TableRow(row);
  if (now < 0) return;
  const QModelIndex current = model_->index(now, MailListModel::kNumber);
  selectionModel()->setCurrentIndex(
      current, highlighted ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                           : QItemSelectionModel::NoUpdate);
}

bool MailTable::event(QEvent* event) {
  // Who acts on the rows means all of them.
  if (event->type() == QEvent::KeyPress && model_ != nullptr) model_->FinishFilter();
  return QTableView::event(event);
}

std::vector<RowRange> MailTable::HighlightedRows() const {
  std::vector<RowRange> ranges;
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    if (!model_->IsFiltered()) {
      ranges.push_back({static_cast<size_t>(range.top()), static_cast<size_t>(range.bottom())});
      continue;
    }
    for (int row = range.top(); row <= range.bottom(); ++row) {
      const size_t listRow = model_->ListRow(row);
      const bool goesOn = row > range.top() && ranges.back().last + 1 == listRow;
      if (goesOn) {
        ranges.back().last = listRow;
      } else {
        ranges.push_back({listRow, listRow});
      }
    }
  }
  std::sort(ranges.begin(), ranges.end(),
            [](const RowRange& a, const RowRange& b) { return a.first < b.first; });
  return ranges;
}

std::vector<RowRange> MailTable::ChosenRows() const {
  const QModelIndex current = currentIndex();
  if (!current.isValid()) return {};
  if (selectionModel()->isSelected(current)) return HighlightedRows();
  const size_t row = model_->ListRow(current.row());
  return {{row, row}};
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
  if (text) {
    const QColor base = colours.color(QPalette::Base);
    colours.setColor(QPalette::Text, ToQColor(*text));
    colours.setColor(
        kDimText, ToQColor(ReadableOn(FromQColor(Mixed(ToQColor(*text), base)), FromQColor(base))));
  }
  setPalette(colours);
}

void MailTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  // The table's own would tell of cells that ours are not, and the same below.
  QAbstractItemView::currentChanged(current, previous);
  if (QAccessible::isActive() && current.isValid() && hasFocus()) {
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(AccessibleChildOf(current.row()));
    QAccessible::updateAccessibility(&event);
  }
  // The mark of the current row is as wide as the table.
  for (const QModelIndex& index : {current, previous}) {
    const QRect cell = visualRect(index);
    if (cell.isValid()) viewport()->update(0, cell.top(), viewport()->width(), cell.height());
  }
}

void MailTable::selectionChanged(const QItemSelection& selected, const QItemSelection& before) {
  QAbstractItemView::selectionChanged(selected, before);
  if (!QAccessible::isActive() || selected.isEmpty()) return;
  QAccessibleEvent event(this, QAccessible::SelectionAdd);
  event.setChild(AccessibleChildOf(selected.first().top()));
  QAccessible::updateAccessibility(&event);
}

// Of many rows only the current one is told: nobody can listen to more.
void MailTable::TellChecks(int first, int last) {
  if (!QAccessible::isActive()) return;
  const int current = currentIndex().row();
  const int row = first == last ? first : current;
  if (row < first || row > last) return;
  QAccessible::State changed;
  changed.checked = true;
  QAccessibleStateChangeEvent event(this, changed);
  event.setChild(AccessibleChildOf(row));
  QAccessible::updateAccessibility(&event);
}

void MailTable::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (model_ == nullptr) return;
  PaintFocus();
  if (model_->rowCount() > 0) return;
  if (list_->Size() > 0) return PaintNothingFound();
  if (!emptyHeading_.isEmpty()) PaintEmpty();
}

// Once the keyboard is used, and where the highlight does not show which row is meant.
void MailTable::PaintFocus() {
  const QModelIndex current = currentIndex();
  if (!current.isValid() || !hasFocus()) return;
  const bool keyboard = window()->testAttribute(Qt::WA_KeyboardFocusChange);
  if (!keyboard && selectionModel()->isSelected(current)) return;
  QStyleOptionFocusRect option;
  option.initFrom(this);
  option.rect = visualRect(current);
  option.rect.setLeft(0);
  option.rect.setRight(viewport()->width() - 1);
  option.state |= QStyle::State_KeyboardFocusChange | QStyle::State_Item;
  QPainter painter(viewport());
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

void MailTable::PaintNothingFound() {
  if (model_->IsFiltering()) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(kDimText));
  painter.drawText(viewport()->rect(), Qt::AlignCenter, "No mail fits the filter. Esc shows all.");
}

void MailTable::SetEmptyText(const QString& heading, const QString& text) {
  emptyHeading_ = heading;
  emptyText_ = text;
  setAccessibleDescription(list_->Size() > 0 ? QString() : heading + ". " + text);
  viewport()->update();
}

void MailTable::PaintEmpty() {
  QPainter painter(viewport());
  const QRect page = viewport()->rect();
  painter.fillRect(page, palette().window());
  const QFont heading = Medium(font());
  const int line = fontMetrics().height();
  const QRect width = page.adjusted(kInset, 0, -kInset, 0);
  const QRect text = fontMetrics().boundingRect(QRect(0, 0, width.width(), page.height()),
                                                Qt::AlignHCenter | Qt::TextWordWrap, emptyText_);
  const int height = kEmptyIconSize + kGap + line + kSmallGap + text.height();
  int top = std::max(0, (page.height() - height) / 2);
  MakeIcon(IconName::kTray).paint(&painter, QRect(page.left(), top, page.width(), kEmptyIconSize));
  top += kEmptyIconSize + kGap;
  painter.setFont(heading);
  painter.setPen(palette().color(QPalette::WindowText));
  const QString shown =
      QFontMetrics(heading).elidedText(emptyHeading_, Qt::ElideMiddle, width.width());
  painter.drawText(QRect(width.left(), top, width.width(), line), Qt::AlignCenter, shown);
  top += line + kSmallGap;
  painter.setFont(font());
  painter.setPen(QApplication::palette().color(kDimText));
  painter.drawText(QRect(width.left(), top, width.width(), text.height()),
                   Qt::AlignHCenter | Qt::TextWordWrap, emptyText_);
}

}  // namespace brindle
