#include "ui/channels_panel.h"

#include <QShortcut>

#include "ui/observed_list_model.h"
#include "ui_channels_panel.h"

namespace brindle {

ChannelsPanel::ChannelsPanel(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::ChannelsPanel>()) {
  ui_->setupUi(this);
}

ChannelsPanel::~ChannelsPanel() = default;

void ChannelsPanel::Attach(Channels& channels) {
  ShowIn(*ui_->lstChannels, *new ObservedListModel(channels.Rooms(), this));
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
}

std::optional<size_t> ChannelsPanel::Selected() const {
  const QModelIndexList rows = ui_->lstChannels->selectionModel()->selectedIndexes();
  return rows.isEmpty() ? std::nullopt : RowFrom(rows.first().row());
}

}  // namespace brindle
