#include "ui/channels_panel.h"

#include "ui/observed_list_model.h"
#include "ui_channels_panel.h"

namespace brindle {

ChannelsPanel::ChannelsPanel(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::ChannelsPanel>()) {
  ui_->setupUi(this);
}

ChannelsPanel::~ChannelsPanel() = default;

void ChannelsPanel::Attach(Channels& channels) {
  ui_->lstChannels->setModel(new ObservedListModel(channels.Rooms(), this));
  connect(ui_->lblChannelsAdd, &QPushButton::clicked, this,
          [&channels] { channels.lblChannelsAdd_Click(); });
  connect(ui_->lblChannelsRemove, &QPushButton::clicked, this,
          [this, &channels] { channels.lblChannelsRemove_Click(Selected()); });
  connect(ui_->lblJoin, &QPushButton::clicked, this,
          [this, &channels] { channels.lblJoin_Click(Selected()); });
  // A double click or Enter.
  connect(ui_->lstChannels, &QListView::activated, this, [&channels](const QModelIndex& index) {
    channels.lstChannels_DblClick(static_cast<size_t>(index.row()));
  });
}

std::optional<size_t> ChannelsPanel::Selected() const {
  const QModelIndexList rows = ui_->lstChannels->selectionModel()->selectedIndexes();
  return rows.isEmpty() ? std::nullopt : RowFrom(rows.first().row());
}

}  // namespace brindle
