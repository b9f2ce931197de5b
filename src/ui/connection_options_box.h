#pragma once
// The account and the proxy on the Connection page of the options.

#include <QWidget>

#include "base/secret_store.h"
#include "settings/connection_options.h"

class QComboBox;
class QFormLayout;
class QLineEdit;

namespace brindle {

class ConnectionOptionsBox : public QWidget {
  Q_OBJECT

 public:
  explicit ConnectionOptionsBox(QWidget* parent = nullptr);

  void Show(const ConnectionOptions& options);

 signals:
  // The user changed something.
  void Changed(const ConnectionOptions& options);
  // The user has typed another password, or has emptied its field.
  void SecretTyped(Secret which, const QString& text);
  // The user wants to pick the file of the client certificate.
  void CertificateWanted();

 private:
  QWidget* BuildAccount();
  QWidget* BuildCertificate();
  QWidget* BuildProxy();
  QLineEdit* PasswordField(const char* name, const char* spoken, Secret which);
  ConnectionOptions Shown() const;
  // Fields that the choices leave without a use are hidden or disabled.
  void ShowFields();
  void Take();

  QComboBox* cmbOptionsAccount_ = nullptr;
  QLineEdit* txtOptionsAccount_ = nullptr;
  QFormLayout* accountForm_ = nullptr;
  QLineEdit* txtOptionsPassword_ = nullptr;
  QWidget* certificateLine_ = nullptr;
  QLineEdit* txtOptionsCertificate_ = nullptr;
  QComboBox* cmbOptionsProxy_ = nullptr;
  QLineEdit* txtOptionsProxy_ = nullptr;
  QFormLayout* proxyForm_ = nullptr;
  QLineEdit* txtOptionsProxyUser_ = nullptr;
  QLineEdit* txtOptionsProxyPassword_ = nullptr;
  bool showing_ = false;
};

}  // namespace brindle
