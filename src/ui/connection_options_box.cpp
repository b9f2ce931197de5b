#include "ui/connection_options_box.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/look.h"
#include "ui/one_line.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

QComboBox* Choice(const char* name, const char* spoken, const QStringList& entries) {
  auto* box = new QComboBox;
  box->setObjectName(name);
  box->setAccessibleName(spoken);
  box->addItems(entries);
  return box;
}

QLineEdit* Field(const char* name, const char* spoken, const char* example) {
  auto* field = new QLineEdit;
  field->setObjectName(name);
  field->setAccessibleName(spoken);
  field->setPlaceholderText(example);
  KeepOneLine(*field);
  return field;
}

QFormLayout* FlatForm(QGroupBox& group) {
  group.setFlat(true);
  return new QFormLayout(&group);
}

}  // namespace

ConnectionOptionsBox::ConnectionOptionsBox(QWidget* parent) : QWidget(parent) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(kWideGap);
  rows->addWidget(BuildAccount());
  rows->addWidget(BuildProxy());
  for (QComboBox* box : {cmbOptionsAccount_, cmbOptionsProxy_}) {
    connect(box, &QComboBox::currentIndexChanged, this, &ConnectionOptionsBox::Take);
  }
  for (QLineEdit* field :
       {txtOptionsAccount_, txtOptionsCertificate_, txtOptionsProxy_, txtOptionsProxyUser_}) {
    connect(field, &QLineEdit::textChanged, this, &ConnectionOptionsBox::Take);
  }
  ShowFields();
}

QWidget* ConnectionOptionsBox::BuildAccount() {
  auto* group = new QGroupBox("Account");
  accountForm_ = FlatForm(*group);
  // As AccountProof counts.
  cmbOptionsAccount_ = Choice("cmbOptionsAccount", "Account",
                              {"No account", "Account and password", "Client certificate"});
  txtOptionsAccount_ = Field("txtOptionsAccount", "Account name", "the name of your account");
  txtOptionsPassword_ = PasswordField("txtOptionsPassword", "Password", Secret::kAccountPassword);
  accountForm_->addRow("Prove it with", cmbOptionsAccount_);
  accountForm_->addRow("Account", txtOptionsAccount_);
  accountForm_->addRow("Password", txtOptionsPassword_);
  accountForm_->addRow("Certificate", BuildCertificate());
  return group;
}

QLineEdit* ConnectionOptionsBox::PasswordField(const char* name, const char* spoken, Secret which) {
  QLineEdit* field = Field(name, spoken, "kept by the system; type a new one");
  field->setEchoMode(QLineEdit::Password);
  connect(field, &QLineEdit::editingFinished, this, [this, field, which] {
    if (!field->isModified()) return;
    field->setModified(false);
    emit SecretTyped(which, field->text());
  });
  return field;
}

QWidget* ConnectionOptionsBox::BuildCertificate() {
  txtOptionsCertificate_ =
      Field("txtOptionsCertificate", "Client certificate", "a PEM file with certificate and key");
  auto* open = new QPushButton("Ope&n...");
  open->setObjectName("cmdOptionsCertificate");
  open->setAccessibleName("Open... (Client certificate)");
  connect(open, &QPushButton::clicked, this, &ConnectionOptionsBox::CertificateWanted);
  certificateLine_ = new QWidget;
  auto* line = new QHBoxLayout(certificateLine_);
  line->setContentsMargins(0, 0, 0, 0);
  line->addWidget(txtOptionsCertificate_);
  line->addWidget(open);
  return certificateLine_;
}

QWidget* ConnectionOptionsBox::BuildProxy() {
  auto* group = new QGroupBox("Proxy");
  proxyForm_ = FlatForm(*group);
  auto* line = new QHBoxLayout;
  // As ProxyKind counts.
  cmbOptionsProxy_ =
      Choice("cmbOptionsProxy", "Proxy", {"None", "As the system", "SOCKS5", "HTTP"});
  txtOptionsProxy_ = Field("txtOptionsProxy", "Proxy address", "host:port");
  line->addWidget(cmbOptionsProxy_);
  line->addWidget(txtOptionsProxy_);
  txtOptionsProxyUser_ = Field("txtOptionsProxyUser", "Proxy user", "only if the proxy wants one");
  txtOptionsProxyPassword_ =
      PasswordField("txtOptionsProxyPassword", "Proxy password", Secret::kProxyPassword);
  proxyForm_->addRow(line);
  proxyForm_->addRow("User", txtOptionsProxyUser_);
  proxyForm_->addRow("Password", txtOptionsProxyPassword_);
  return group;
}

void ConnectionOptionsBox::Show(const ConnectionOptions& options) {
  showing_ = true;
  cmbOptionsAccount_->setCurrentIndex(static_cast<int>(options.proof));
  txtOptionsAccount_->setText(ToQString(options.account));
  txtOptionsCertificate_->setText(ToQString(options.certificatePath));
  cmbOptionsProxy_->setCurrentIndex(static_cast<int>(options.proxy));
  txtOptionsProxy_->setText(ToQString(options.proxyAddress));
  txtOptionsProxyUser_->setText(ToQString(options.proxyUser));
  showing_ = false;
  ShowFields();
}

ConnectionOptions ConnectionOptionsBox::Shown() const {
  return {static_cast<AccountProof>(cmbOptionsAccount_->currentIndex()),
          txtOptionsAccount_->text().toStdString(),
          txtOptionsCertificate_->text().toStdString(),
          static_cast<ProxyKind>(cmbOptionsProxy_->currentIndex()),
          txtOptionsProxy_->text().toStdString(),
          txtOptionsProxyUser_->text().toStdString()};
}

void ConnectionOptionsBox::ShowFields() {
  const ConnectionOptions shown = Shown();
  accountForm_->setRowVisible(txtOptionsAccount_, shown.proof != AccountProof::kNone);
  accountForm_->setRowVisible(txtOptionsPassword_, shown.proof == AccountProof::kPassword);
  accountForm_->setRowVisible(certificateLine_, shown.proof == AccountProof::kCertificate);
  const bool isChosen = shown.proxy == ProxyKind::kSocks5 || shown.proxy == ProxyKind::kHttp;
  txtOptionsProxy_->setEnabled(isChosen);
  proxyForm_->setRowVisible(txtOptionsProxyUser_, isChosen);
  proxyForm_->setRowVisible(txtOptionsProxyPassword_, isChosen);
}

void ConnectionOptionsBox::Take() {
  ShowFields();
  if (!showing_) emit Changed(Shown());
}

}  // namespace brindle
