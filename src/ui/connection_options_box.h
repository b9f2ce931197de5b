#pragma once
// The account and the proxy on the Connection page of the options.

#include <QWidget>

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
  // The user wants to pick the file of the client certificate.
  void CertificateWanted();

 private:
  QWidget* BuildAccount();
  QWidget* BuildProxy();
  ConnectionOptions Shown() const;
  // Fields that the choices leave without a use are disabled.
  void EnableFields();
  void Take();

  QComboBox* cmbOptionsAccount_ = nullptr;
  QLineEdit* txtOptionsAccount_ = nullptr;
  QWidget* certificateLine_ = nullptr;
  QLineEdit* txtOptionsCertificate_ = nullptr;
  QComboBox* cmbOptionsProxy_ = nullptr;
  QLineEdit* txtOptionsProxy_ = nullptr;
  bool showing_ = false;
};

}  // namespace brindle
