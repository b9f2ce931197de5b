#pragma once
// The "Info / Commands" panel: screen name, server handles, access code, and the commands menu.

#include <QMenu>
#include <QWidget>
#include <memory>

#include "mail/server_commands.h"
#include "mail/server_handles.h"

namespace Ui {
class InfoPanel;
}

namespace brindle {

class InfoPanel : public QWidget {
  Q_OBJECT

 public:
  explicit InfoPanel(QWidget* parent = nullptr);
  ~InfoPanel() override;

  void Attach(ServerHandles& handles, ServerCommands& commands);

  QString ScreenName() const;
  void SetScreenName(const QString& name);

 signals:
  // The user typed in the screen name box.
  void ScreenNameEdited(const QString& name);

 private:
  CommandFields Fields() const;

  std::unique_ptr<Ui::InfoPanel> ui_;
  QMenu mnuCommands_;
  QString typedHandle_;
};

}  // namespace brindle
