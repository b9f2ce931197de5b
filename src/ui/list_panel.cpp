#include "ui/list_panel.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <algorithm>

#include "ui/mail_list_model.h"
#include "ui/pop_up.h"
#include "ui/qt_text.h"
#include "ui_list_panel.h"

namespace brindle {
namespace {

constexpr int kNumberColumnWidth = 110;

}  // namespace

ListPanel::ListPanel(QWidget* parent)
    : QWidget(parent),
      ui_(std::make_unique<Ui::ListPanel>()),
      mnuLoadList_("Load List", this),
      mnuSelect_("Select", this) {
  ui_->setupUi(this);
  mnuLoadList_.setObjectName("mnuLoadList");
  mnuSelect_.setObjectName("mnuSelect");
  QTableView* table = ui_->lstServerList;
  table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  table->verticalHeader()->hide();
  table->horizontalHeader()->setStretchLastSection(true);
  table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  table->horizontalHeader()->setHighlightSections(false);
  table->installEventFilter(this);
  table->viewport()->installEventFilter(this);
  // They come with the search and the manual request windows.
  ui_->cmdManualRequest->setVisible(false);
  ui_->cmdFind->setVisible(false);
  connect(ui_->txtListAOLSN, &QLineEdit::textEdited, this, &ListPanel::ScreenNameEdited);
}

ListPanel::~ListPanel() = default;

void ListPanel::Attach(MailList& list, ListLoader& loader, ListSelection& selection,
                       Requests& requests) {
  list_ = &list;
  selection_ = &selection;
  model_ = new MailListModel(list, this);
  ui_->lstServerList->setModel(model_);
  ui_->lstServerList->setColumnWidth(MailListModel::kNumber, kNumberColumnWidth);
  connect(model_, &MailListModel::CheckToggled, this,
          [this] { selection_->lstServerList_ItemCheck(Target()); });
  connect(ui_->cmdRequest, &QPushButton::clicked, this, [this, &requests] {
    requests.cmdRequest_Click(ui_->txtListAOLSN->text().toStdString(),
                              ui_->txtListServer->text().toStdString());
  });
  BuildMenus(loader, selection);
}

void ListPanel::BuildMenus(ListLoader& loader, ListSelection& selection) {
  connect(ui_->cmdLoadList, &QPushButton::clicked, this,
          [this] { PopUpBelow(mnuLoadList_, *ui_->cmdLoadList); });
  AddMenuItem(mnuLoadList_, "mnuLoadListFile", "From File",
              [&loader] { loader.mnuLoadListFile_Click(); });
  AddMenuItem(mnuLoadList_, "mnuLoadListWeb", "From Web",
              [&loader] { loader.mnuLoadListWeb_Click(); });

  QAction* all = AddMenuItem(mnuSelect_, "mnuSelectAll", "All",
                             [this, &selection] { selection.mnuSelectAll_Click(Target()); });
  connect(ui_->cmdSelect, &QPushButton::clicked, this, [this, all] {
    all->setVisible(false);
    PopUpBelow(mnuSelect_, *ui_->cmdSelect);
  });
  AddMenuItem(mnuSelect_, "mnuSelectNone", "None",
              [this, &selection] { selection.mnuSelectNone_Click(Target()); });
  mnuSelect_.addSeparator();
  AddMenuItem(mnuSelect_, "mnuSelectBetween", "Between",
              [this, &selection] { selection.mnuSelectBetween_Click(Target()); });
  AddMenuItem(mnuSelect_, "mnuSelectString", "By String",
              [this, &selection] { selection.mnuSelectString_Click(Target()); });
  mnuSelect_.addSeparator();
  // These two stand in the menu and do nothing.
  AddMenuItem(mnuSelect_, "mnuSelectSimilarLeft", "Similar From Left", [] {});
  AddMenuItem(mnuSelect_, "mnuSelectSimilarRight", "Similar From Right", [] {});
}

SelectTarget ListPanel::Target() { return {ListKind::kMain, *list_, *this}; }

void ListPanel::SetScreenName(const QString& name) { ui_->txtListAOLSN->setText(name); }

void ListPanel::SetTitleHeader(const std::string& text) { model_->SetTitleHeader(ToQString(text)); }

void ListPanel::EnableListButtons(bool enabled) {
  for (QPushButton* button : {ui_->cmdSelect, ui_->cmdRequest, ui_->cmdFind, ui_->cmdLoadList}) {
    button->setEnabled(enabled);
  }
}

void ListPanel::ShowList(bool shown) {
  ui_->lstServerList->setVisible(shown);
  ui_->lblLoadList->setVisible(!shown);
}

void ListPanel::SetListServer(const std::string& handle) {
  ui_->txtListServer->setText(ToQString(handle));
}

bool ListPanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->lstServerList && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Space && key->modifiers() == Qt::NoModifier) {
      ToggleHighlighted();
      return true;
    }
  }
  if (watched == ui_->lstServerList->viewport() && event->type() == QEvent::MouseButtonRelease) {
    // After the table has handled the release, which may toggle the row under the mouse.
    const Qt::KeyboardModifiers held = static_cast<QMouseEvent*>(event)->modifiers();
    QMetaObject::invokeMethod(
        this, [this, held] { ShiftClick(held); }, Qt::QueuedConnection);
  }
  return QWidget::eventFilter(watched, event);
}

void ListPanel::ShiftClick(Qt::KeyboardModifiers held) {
  const Modifiers modifiers{held.testFlag(Qt::ShiftModifier), held.testFlag(Qt::ControlModifier),
                            held.testFlag(Qt::AltModifier)};
  const Marking marking = selection_->lstServerList_MouseUp(*list_, modifiers, HighlightedRows());
  if (marking == Marking::kCutShort) {
    emit Hint(
        "Shift+click reaches the first 32767 rows; press Space to check all highlighted rows.");
  }
}

void ListPanel::ToggleHighlighted() {
  const QModelIndex current = ui_->lstServerList->currentIndex();
  if (!current.isValid()) return;
  const bool checked = !list_->IsChecked(static_cast<size_t>(current.row()));
  {
    const MailList::BulkChange bulk(*list_);
    for (const RowRange& range : HighlightedRows()) {
      for (size_t row = range.first; row <= range.last; ++row) list_->SetChecked(row, checked);
    }
  }
  selection_->lstServerList_ItemCheck(Target());
}

std::vector<RowRange> ListPanel::HighlightedRows() const {
  std::vector<RowRange> ranges;
  for (const QItemSelectionRange& range : ui_->lstServerList->selectionModel()->selection()) {
    ranges.push_back({static_cast<size_t>(range.top()), static_cast<size_t>(range.bottom())});
  }
  std::sort(ranges.begin(), ranges.end(),
            [](const RowRange& a, const RowRange& b) { return a.first < b.first; });
  return ranges;
}

}  // namespace brindle
