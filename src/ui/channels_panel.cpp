#include "ui/channels_panel.h"

#include <QMenu>
#include <QShortcut>

#include "base/text.h"
#include "ui/look_paint.h"
#include "ui/pop_up.h"
#include "ui_channels_panel.h"

namespace brindle {

ChannelsPanel::ChannelsPanel(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::ChannelsPanel>()) {
  ui_->setupUi(this);
  ui_->lstChannels->viewport()->setAutoFillBackground(false);
  QPixmap nothing(kIconSize, kIconSize);
  nothing.fill(Qt::transparent);
  noIcon_ = QIcon(nothing);
}

ChannelsPanel::~ChannelsPanel() = default;

void ChannelsPanel::Attach(Channels& channels) {
  model_ = new ObservedListModel(channels.Rooms(), this);
  model_->SetLook([this](std::string_view room, int role) { return LookOf(room, role); });
  ShowIn(*ui_->lstChannels, *model_);
  connect(ui_->lblChannelsAdd, &QPushButton::clicked, this,
          [&channels] { channels.lblChannelsAdd_Click(); });
  connect(ui_->lblChannelsRemove, &QPushButton::clicked, this,
          [this, &channels] { channels.lblChannelsRemove_Click(Selected()); });
  connect(ui_->lblJoin, &QPushButton::clicked, this,
          [this, &channels] { channels.lblJoin_Click(Selected()); });
  // Not by `activated`, which a single click raises on some desktops.
  const auto enter = [this, &channels] {
    if (const auto row = Selected()) channels.lstChannels_DblClick(*row);
  };
  connect(ui_->lstChannels, &QListView::doubleClicked, this, enter);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* shortcut = new QShortcut(QKeySequence(key), ui_->lstChannels);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, enter);
  }
  const auto press = [this](Qt::Key key, QPushButton* button) {
    auto* shortcut = new QShortcut(QKeySequence(key), ui_->lstChannels);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
  };
  press(Qt::Key_Insert, ui_->lblChannelsAdd);
  press(Qt::Key_Delete, ui_->lblChannelsRemove);
  connect(ui_->lstChannels, &QWidget::customContextMenuRequested, this, &ChannelsPanel::ShowMenu);
}

void ChannelsPanel::ShowSession(const Session& session) {
  currentRoom_ = session.currentRoom;
  if (model_ != nullptr) model_->Refresh();
}

void ChannelsPanel::FocusList() {
  if (!ui_->lstChannels->currentIndex().isValid()) {
    ui_->lstChannels->setCurrentIndex(model_->index(0));
  }
  ui_->lstChannels->setFocus();
}

QVariant ChannelsPanel::LookOf(std::string_view room, int role) const {
  const bool here = !currentRoom_.empty() && EqualsIgnoringCase(room, currentRoom_);
  if (role == Qt::DecorationRole) return here ? hereIcon_ : noIcon_;
  if (role == Qt::FontRole && here) return Medium(ui_->lstChannels->font());
  if (role == Qt::AccessibleDescriptionRole && here) return "The room that you are in";
  return {};
}

void ChannelsPanel::ShowMenu(QPoint at) {
  auto* menu = new QMenu(this);
  menu->setObjectName("mnuChannels");
  menu->setAttribute(Qt::WA_DeleteOnClose);
  AddMenuItem(*menu, "mnuChannelsJoin", "&Join", [this] {
    ui_->lblJoin->click();
  })->setEnabled(Selected().has_value());
  AddMenuItem(*menu, "mnuChannelsRemove", "&Remove", [this] {
    ui_->lblChannelsRemove->click();
  })->setEnabled(Selected().has_value());
  menu->popup(ui_->lstChannels->viewport()->mapToGlobal(at));
}

std::optional<size_t> ChannelsPanel::Selected() const {
  const QModelIndexList rows = ui_->lstChannels->selectionModel()->selectedIndexes();
  return rows.isEmpty() ? std::nullopt : RowFrom(rows.first().row());
}

}  // namespace brindle
