#include "ui/who_panel.h"

#include "ui/observed_list_model.h"
#include "ui/qt_text.h"
#include "ui_who_panel.h"

namespace brindle {

WhoPanel::WhoPanel(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::WhoPanel>()) {
  ui_->setupUi(this);
}

WhoPanel::~WhoPanel() = default;

void WhoPanel::Attach(WhoList& who) {
  auto* model = new ObservedListModel(who.Nicks(), this);
  ShowIn(*ui_->lstWho, *model);
  const auto refresh = [this, &who] { ui_->lblWhoshere->setText(ToQString(who.Caption())); };
  connect(model, &QAbstractItemModel::rowsInserted, this, refresh);
  connect(model, &QAbstractItemModel::rowsRemoved, this, refresh);
  connect(model, &QAbstractItemModel::modelReset, this, refresh);
}

}  // namespace brindle
