#include "ui/info_panel.h"

#include "ui/mnemonic.h"
#include "ui/observed_list_model.h"
#include "ui/one_line.h"
#include "ui/pop_up.h"
#include "ui/qt_text.h"
#include "ui_info_panel.h"

namespace brindle {

InfoPanel::InfoPanel(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::InfoPanel>()), mnuCommands_("Commands", this) {
  ui_->setupUi(this);
  for (QLineEdit* field : {ui_->txtInfoAOLSN, ui_->txtAccessCode}) {
    KeepOneLine(*field);
  }
  mnuCommands_.setObjectName("mnuCommands");
  tmrAD_.setObjectName("tmrAD");
  tmrAD_.setInterval(Advertisement::kTickMilliseconds);
  GiveMenu(*ui_->cmdCommands, mnuCommands_);
  connect(ui_->txtInfoAOLSN, &QLineEdit::textEdited, this, &InfoPanel::ScreenNameEdited);
}

InfoPanel::~InfoPanel() = default;

void InfoPanel::AttachHandles(ServerHandles& handles) {
  ui_->cmbServers->Attach(handles.Items());
  // Who has no server yet is offered the first one that comes.
  connect(ui_->cmbServers->model(), &QAbstractItemModel::rowsInserted, this,
          [this](const QModelIndex&, int row) {
            if (ui_->cmbServers->currentText().trimmed().isEmpty())
              ui_->cmbServers->Select(RowFrom(row));
          });
  const auto add = [this, &handles] {
    handles.cmdInfoAdd_Click(ui_->cmbServers->currentText().toStdString());
  };
  connect(ui_->cmdInfoAdd, &QPushButton::clicked, this, add);
  connect(ui_->cmbServers->lineEdit(), &QLineEdit::returnPressed, this, add);
  connect(ui_->cmdInfoRemove, &QPushButton::clicked, this,
          [this, &handles] { handles.cmdInfoRemove_Click(ui_->cmbServers->Selected()); });
}

void InfoPanel::Attach(ServerHandles& handles, ServerCommands& commands,
                       Advertisement& advertisement) {
  AttachHandles(handles);
  connect(ui_->cmdIdle, &QPushButton::clicked, this,
          [&advertisement] { advertisement.cmdIdle_Click(); });
  connect(&tmrAD_, &QTimer::timeout, this, [&advertisement] { advertisement.tmrAD_Timer(); });
  AddMenuItem(mnuCommands_, "mnuCommandsRequest", "&Request Code",
              [this, &commands] { commands.mnuCommandsRequest_Click(Fields()); });
  AddMenuItem(mnuCommands_, "mnuCommandsVerify", "&Verify Code",
              [this, &commands] { commands.mnuCommandsVerify_Click(Fields()); });
  mnuCommands_.addSeparator()->setObjectName("mnuCommandsDiv0");
  AddMenuItem(mnuCommands_, "mnuCommandsList", "Request &List", [this, &commands] {
    commands.mnuCommandsList_Click(Fields());
    emit ListAsked();
  });
  AddMenuItem(mnuCommands_, "mnuCommandsStatus", "Request &Status",
              [this, &commands] { commands.mnuCommandsStatus_Click(Fields()); });
}

QString InfoPanel::ScreenName() const { return ui_->txtInfoAOLSN->text(); }

void InfoPanel::SetScreenName(const QString& name) { ui_->txtInfoAOLSN->setText(name); }

void InfoPanel::SetServer(const QString& handle) { ui_->cmbServers->setEditText(handle); }

void InfoPanel::SetIdleCaption(const std::string& caption) {
  ui_->cmdIdle->setText(WithMnemonic(ToQString(caption), caption == "Idle" ? 'l' : 'b'));
}

void InfoPanel::SetSentAd(const std::string& caption) {
  ui_->lblSentAd->setText(ToQString(caption));
}

void InfoPanel::EnableAdTimer(bool enabled) {
  if (enabled) {
    tmrAD_.start();
  } else {
    tmrAD_.stop();
  }
}

CommandFields InfoPanel::Fields() const {
  return {ui_->txtInfoAOLSN->text().toStdString(), ui_->txtAccessCode->text().toStdString(),
          ui_->cmbServers->currentText().toStdString()};
}

}  // namespace brindle
