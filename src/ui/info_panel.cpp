#include "ui/info_panel.h"

#include "ui/icons.h"
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
  mnuCommands_.setToolTipsVisible(true);
  ui_->cmdInfoAdd->setIcon(MakeIcon(IconName::kAdd));
  ui_->cmdInfoRemove->setIcon(MakeIcon(IconName::kRemove));
  for (QLabel* label : {ui_->lblCommandsWhat, ui_->lblAdvertiseWhat}) {
    label->setForegroundRole(kDimText);
  }
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
  AddCommand("mnuCommandsRequest", "&Request Code", ServerCommand::kRequestCode,
             [this, &commands] { commands.mnuCommandsRequest_Click(Fields()); });
  AddCommand("mnuCommandsVerify", "&Verify Code", ServerCommand::kVerifyCode,
             [this, &commands] { commands.mnuCommandsVerify_Click(Fields()); });
  mnuCommands_.addSeparator()->setObjectName("mnuCommandsDiv0");
  AddCommand("mnuCommandsList", "Request &List", ServerCommand::kRequestList, [this, &commands] {
    if (commands.mnuCommandsList_Click(Fields())) emit ListAsked();
  });
  AddCommand("mnuCommandsStatus", "Request &Status", ServerCommand::kRequestStatus,
             [this, &commands] { commands.mnuCommandsStatus_Click(Fields()); });
}

void InfoPanel::AddCommand(const char* name, const char* text, ServerCommand command,
                           const std::function<void()>& run) {
  QAction* item = AddMenuItem(mnuCommands_, name, text, run);
  connect(&mnuCommands_, &QMenu::aboutToShow, item, [this, item, command] {
    item->setToolTip("<span>" + ToQString(ServerCommands::Line(command, Fields())).toHtmlEscaped() +
                     "</span>");
  });
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
