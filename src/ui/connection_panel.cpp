#include "ui/connection_panel.h"

#include <QApplication>

#include "ui/main_status_bar.h"
#include "ui/one_line.h"
#include "ui/qt_text.h"
#include "ui_connection_panel.h"

namespace brindle {
namespace {

constexpr int kWidthForGuide = 720;
constexpr int kFormStretch = 5;  // beside each other
constexpr int kGuideStretch = 3;

}  // namespace

ConnectionPanel::ConnectionPanel(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::ConnectionPanel>()) {
  ui_->setupUi(this);
  ui_->cmdConnectAdd->setIcon(MakeIcon(IconName::kAdd));
  ui_->cmdConnectRemove->setIcon(MakeIcon(IconName::kRemove));
  ui_->cmdCheckForUpdate->setIcon(MakeIcon(IconName::kUpdate));
  for (QLineEdit* field : {ui_->txtConnectNick, ui_->txtAlternateNick, ui_->txtConnectPort}) {
    KeepOneLine(*field);
  }
  ui_->lblConnectTrouble->setForegroundRole(kBadText);
  ui_->panelLayout->setAlignment(ui_->formColumn, Qt::AlignTop);
  ui_->panelLayout->setAlignment(ui_->fmeGuide, Qt::AlignTop);
  // Before the words that say the same.
  ui_->connectLayout->insertWidget(ui_->connectLayout->indexOf(ui_->lblStatus), &stateDot_);
  ShowCancelButton(false);
  SetConnectTrouble("");
  for (QLineEdit* field : {ui_->txtConnectNick, ui_->txtAlternateNick, ui_->txtConnectPort,
                           ui_->cmbConnectServer->lineEdit()}) {
    connect(field, &QLineEdit::returnPressed, this, &ConnectionPanel::Connect);
  }
}

ConnectionPanel::~ConnectionPanel() = default;

void ConnectionPanel::Attach(Connection& connection, IrcServers& servers) {
  connect(ui_->cmdConnect, &QPushButton::clicked, this,
          [this, &connection] { connection.cmdConnect_Click(Fields()); });
  connect(ui_->cmdConnectCancel, &QPushButton::clicked, this,
          [&connection] { connection.cmdConnectCancel_Click(); });
  ui_->cmbConnectServer->Attach(servers.Entries());
  connect(ui_->cmbConnectServer, &ListComboBox::Picked, this,
          [&servers](std::optional<size_t> row) { servers.cmbConnectServer_Click(row); });
  connect(ui_->cmdConnectAdd, &QPushButton::clicked, this,
          [&servers] { servers.cmdConnectAdd_Click(); });
  connect(ui_->cmdConnectRemove, &QPushButton::clicked, this,
          [this, &servers] { servers.cmdConnectRemove_Click(SelectedServer()); });
  connect(ui_->txtConnectPort, &QLineEdit::textChanged, this,
          [this, &servers](const QString& text) {
            servers.txtConnectPort_Change(text.toStdString(), SelectedServer());
          });
  // By the user only: a picked server shows its own.
  connect(ui_->chkConnectTls, &QCheckBox::clicked, this, [this, &servers](bool on) {
    servers.chkConnectTls_Click(on, Fields().port, SelectedServer());
  });
  connect(ui_->cmdCheckForUpdate, &QPushButton::clicked, this,
          &ConnectionPanel::CheckForUpdateClicked);
}

ConnectFields ConnectionPanel::Fields() const {
  return {ui_->txtConnectNick->text().toStdString(), ui_->txtAlternateNick->text().toStdString(),
          ui_->cmbConnectServer->currentText().toStdString(),
          ui_->txtConnectPort->text().toStdString(), ui_->chkConnectTls->isChecked()};
}

void ConnectionPanel::SetNicks(const QString& nick, const QString& alternateNick) {
  ui_->txtConnectNick->setText(nick);
  ui_->txtAlternateNick->setText(alternateNick);
}

std::optional<size_t> ConnectionPanel::SelectedServer() const {
  return ui_->cmbConnectServer->Selected();
}

void ConnectionPanel::SelectServer(std::optional<size_t> row) {
  ui_->cmbConnectServer->Select(row);
}

void ConnectionPanel::SetPort(const std::string& text) {
  ui_->txtConnectPort->setText(ToQString(text));
}

void ConnectionPanel::SetTls(bool on) { ui_->chkConnectTls->setChecked(on); }

void ConnectionPanel::SetConnectButton(ConnectCaption caption, bool enabled) {
  ui_->cmdConnect->setText(caption == ConnectCaption::kConnect ? "Co&nnect" : "Disco&nnect");
  ui_->cmdConnect->setEnabled(enabled);
}

void ConnectionPanel::SetNickFieldsEnabled(bool enabled) {
  ui_->txtConnectNick->setEnabled(enabled);
  ui_->txtAlternateNick->setEnabled(enabled);
}

void ConnectionPanel::SetAlternateNick(const std::string& nick) {
  ui_->txtAlternateNick->setText(ToQString(nick));
}

void ConnectionPanel::SetLoginStatus(const std::string& text) {
  ui_->lblStatus->setText(ToQString(text));
}

void ConnectionPanel::ShowCancelButton(bool shown) {
  // The keyboard stays where the user is: at the button that can be pressed now.
  const bool hadFocus = ui_->cmdConnect->hasFocus() || ui_->cmdConnectCancel->hasFocus();
  ui_->cmdConnectCancel->setVisible(shown);
  if (hadFocus || (shown && isAncestorOf(QApplication::focusWidget()))) {
    (shown ? ui_->cmdConnectCancel : ui_->cmdConnect)->setFocus();
  }
}

void ConnectionPanel::ShowSession(const Session& session) {
  stateDot_.SetIcon(IconName::kDot, StateRole(session.connectionState));
}

void ConnectionPanel::SetServer(const std::string& host, int port, bool tls) {
  ui_->cmbConnectServer->setEditText(ToQString(host));
  ui_->txtConnectPort->setText(QString::number(port));
  SetTls(tls);
}

void ConnectionPanel::Connect() {
  if (!ui_->cmdConnect->text().startsWith("Dis")) ui_->cmdConnect->click();
}

GuideCard& ConnectionPanel::Guide() { return *ui_->fmeGuide; }

// The guide stands below the fields where there is no room beside them, and gives way to them where
// there is none below either.
void ConnectionPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  const bool beside = width() >= kWidthForGuide;
  ui_->panelLayout->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  ui_->panelLayout->setStretchFactor(ui_->formColumn, beside ? kFormStretch : 0);
  ui_->panelLayout->setStretchFactor(ui_->fmeGuide, beside ? kGuideStretch : 0);
  const int needed = ui_->formColumn->sizeHint().height() + ui_->fmeGuide->sizeHint().height() +
                     ui_->cmdCheckForUpdate->sizeHint().height() + 3 * kWideGap;
  ui_->fmeGuide->setVisible(beside || height() >= needed);
}

bool ConnectionPanel::CancelAttempt() {
  const bool connecting = !ui_->cmdConnectCancel->isHidden();
  if (connecting) ui_->cmdConnectCancel->click();
  return connecting;
}

void ConnectionPanel::FocusFirst() {
  if (ui_->txtConnectNick->text().trimmed().isEmpty()) {
    ui_->txtConnectNick->setFocus();
  } else {
    ui_->cmdConnect->setFocus();
  }
}

void ConnectionPanel::SetConnectTrouble(const std::string& text) {
  ui_->lblConnectTrouble->setText(ToQString(text));
  ui_->lblConnectTrouble->setVisible(!text.empty());
}

}  // namespace brindle
