#pragma once
// The connection panel: nicks, server and port, and the Connect button.

#include <QWidget>
#include <memory>
#include <optional>

#include "irc/connection.h"
#include "irc/irc_servers.h"
#include "ui/guide_card.h"
#include "ui/icons.h"

namespace Ui {
class ConnectionPanel;
}

namespace brindle {

class ConnectionPanel : public QWidget, public ConnectView {
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

  void SetConnectButton(ConnectCaption caption, bool enabled) override;
  void ShowCancelButton(bool shown) override;
  void SetNickFieldsEnabled(bool enabled) override;
  void SetAlternateNick(const std::string& nick) override;
  void SetLoginStatus(const std::string& text) override;
  void SetConnectTrouble(const std::string& text) override;
  void SetPort(const std::string& text) override;
  void SetTls(bool on) override;

  void ShowSession(const Session& session);
  void SetServer(const std::string& host, int port, bool tls);
  // As by the button; never disconnects.
  void Connect();

  GuideCard& Guide();

  // False when no attempt is under way.
  bool CancelAttempt();
  // To the nick where it is missing, else to the button.
  void FocusFirst();

 signals:
  void CheckForUpdateClicked();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  std::unique_ptr<Ui::ConnectionPanel> ui_;
  IconLabel& stateDot_ = *new IconLabel(IconName::kDot, LookRole::kBad, kDotSize, this);
};

}  // namespace brindle
