#pragma once
// The connection panel: nicks, server and port, and the Connect button.

#include <QWidget>
#include <memory>

#include "irc/connection.h"

namespace Ui {
class ConnectionPanel;
}

namespace brindle {

class ConnectionPanel : public QWidget {
  Q_OBJECT

 public:
  explicit ConnectionPanel(QWidget* parent = nullptr);
  ~ConnectionPanel() override;

  void Attach(Connection& connection);

  // The texts of the fields right now.
  ConnectFields Fields() const;
  // Fills the fields; an empty port leaves the one that stands there.
  void SetFields(const ConnectFields& fields);

  void SetConnectButton(ConnectCaption caption, bool enabled);
  void SetNickFieldsEnabled(bool enabled);
  void SetAlternateNick(const QString& nick);
  void SetLoginStatus(const QString& text);

 private:
  std::unique_ptr<Ui::ConnectionPanel> ui_;
};

}  // namespace brindle
