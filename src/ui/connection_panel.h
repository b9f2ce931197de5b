#pragma once
// The connection panel: nicks, server and port, and the Connect button.

#include <QWidget>
#include <memory>
#include <optional>

#include "irc/connection.h"
#include "irc/irc_servers.h"

namespace Ui {
class ConnectionPanel;
}

namespace brindle {

class ConnectionPanel : public QWidget, public IrcServersView {
  Q_OBJECT

 public:
  explicit ConnectionPanel(QWidget* parent = nullptr);
  ~ConnectionPanel() override;

  void Attach(Connection& connection, IrcServers& servers);

  // The texts of the fields right now.
  ConnectFields Fields() const;
  void SetNicks(const QString& nick, const QString& alternateNick);

  std::optional<size_t> SelectedServer() const;
  void SelectServer(std::optional<size_t> row);

  void SetPort(const std::string& text) override;

  void SetConnectButton(ConnectCaption caption, bool enabled);
  void SetNickFieldsEnabled(bool enabled);
  void SetAlternateNick(const QString& nick);
  void SetLoginStatus(const QString& text);

 signals:
  void CheckForUpdateClicked();

 private:
  std::unique_ptr<Ui::ConnectionPanel> ui_;
};

}  // namespace brindle
