#include "ui/connection_panel.h"

#include "ui/qt_text.h"
#include "ui_connection_panel.h"

namespace brindle {

ConnectionPanel::ConnectionPanel(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::ConnectionPanel>()) {
  ui_->setupUi(this);
  // Enter anywhere among the fields connects; it never disconnects.
  const auto connectByEnter = [this] {
    if (ui_->cmdConnect->text() == "Connect") ui_->cmdConnect->click();
  };
  for (QLineEdit* field : {ui_->txtConnectNick, ui_->txtAlternateNick, ui_->txtConnectPort,
                           ui_->cmbConnectServer->lineEdit()}) {
    connect(field, &QLineEdit::returnPressed, this, connectByEnter);
  }
}

ConnectionPanel::~ConnectionPanel() = default;

void ConnectionPanel::Attach(Connection& connection) {
  connect(ui_->cmdConnect, &QPushButton::clicked, this,
          [this, &connection] { connection.cmdConnect_Click(Fields()); });
}

ConnectFields ConnectionPanel::Fields() const {
  return {ui_->txtConnectNick->text().toStdString(), ui_->txtAlternateNick->text().toStdString(),
          ui_->cmbConnectServer->currentText().toStdString(),
          ui_->txtConnectPort->text().toStdString()};
}

void ConnectionPanel::SetFields(const ConnectFields& fields) {
  ui_->txtConnectNick->setText(ToQString(fields.nick));
  ui_->txtAlternateNick->setText(ToQString(fields.alternateNick));
  ui_->cmbConnectServer->setEditText(ToQString(fields.server));
  if (!fields.port.empty()) ui_->txtConnectPort->setText(ToQString(fields.port));
}

void ConnectionPanel::SetConnectButton(ConnectCaption caption, bool enabled) {
  ui_->cmdConnect->setText(caption == ConnectCaption::kConnect ? "Connect" : "Disconnect");
  ui_->cmdConnect->setEnabled(enabled);
}

void ConnectionPanel::SetNickFieldsEnabled(bool enabled) {
  ui_->txtConnectNick->setEnabled(enabled);
  ui_->txtAlternateNick->setEnabled(enabled);
}

void ConnectionPanel::SetAlternateNick(const QString& nick) {
  ui_->txtAlternateNick->setText(nick);
}

void ConnectionPanel::SetLoginStatus(const QString& text) { ui_->lblStatus->setText(text); }

}  // namespace brindle
