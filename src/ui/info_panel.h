#pragma once
// The "Info / Commands" panel: screen name, server handles, access code, the commands menu and the
// advertising.

#include <QMenu>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

#include "advert/advertisement.h"
#include "mail/server_commands.h"
#include "mail/server_handles.h"

namespace Ui {
class InfoPanel;
}

namespace brindle {

class InfoPanel : public QWidget, public AdvertisementView {
  Q_OBJECT

 public:
  explicit InfoPanel(QWidget* parent = nullptr);
  ~InfoPanel() override;

  void Attach(ServerHandles& handles, ServerCommands& commands, Advertisement& advertisement);

  QString ScreenName() const;
  void SetScreenName(const QString& name);
  // The server handle that commands go to.
  void SetServer(const QString& handle);

  void SetIdleCaption(const std::string& caption) override;
  void SetSentAd(const std::string& caption) override;
  void EnableAdTimer(bool enabled) override;

 signals:
  // The user asked a server for its list.
  void ListAsked();
  // The user typed in the screen name box.
  void ScreenNameEdited(const QString& name);

 private:
  void AttachHandles(ServerHandles& handles);
  CommandFields Fields() const;
  // An item that tells in its tool tip what it would say.
  void AddCommand(const char* name, const char* text, ServerCommand command,
                  const std::function<void()>& run);

  std::unique_ptr<Ui::InfoPanel> ui_;
  QMenu mnuCommands_;
  QTimer tmrAD_{this};
};

}  // namespace brindle
