#pragma once
// The update check as a whole: joins the window, the updater and what the machine gives them.

#include <QCoreApplication>
#include <QPointer>
#include <functional>
#include <memory>

#include "platform/network.h"
#include "ui/frm_updater.h"
#include "update/updater.h"

namespace brindle {

struct UpdateDeskOptions {
  std::string dataFolder;  // where the folder "update" is made
  std::string server;      // see ReadUpdateServer
  std::string key;         // what the list must be signed with, if anything
  Version own;             // the version that runs
  // Where the updater program lies.
  std::string programFolder = QCoreApplication::applicationDirPath().toStdString();
  int patienceMilliseconds = NetworkHttpClient::kPatienceMilliseconds;
};

class UpdateDesk {
 public:
  // `endProgram` is called once the updater program has been started. The window is a child of
  // `parent`, which may be null and may go before this or after it.
  UpdateDesk(QWidget* parent, const SettingsFile& settings, Dialogs& dialogs,
             const UpdateDeskOptions& options, std::function<void()> endProgram);
  ~UpdateDesk();
  UpdateDesk(const UpdateDesk&) = delete;
  UpdateDesk& operator=(const UpdateDesk&) = delete;

  // The proxy to go through, and the password of its user.
  void SetConnection(const ConnectionOptions& options, const std::string& password);

  // The main window's button "Check for update".
  void cmdCheckForUpdate_Click();

  // The program ends: drops a running transfer. To be called before the event loop is left.
  void Stop();

  // Null once the parent is gone.
  FrmUpdater* Window() { return window_; }

 private:
  struct Works;

  QPointer<FrmUpdater> window_;
  // A running transfer waits in event loops of its own, in which this may be destroyed: it holds
  // what it works with until it has returned.
  std::shared_ptr<Works> works_;
};

}  // namespace brindle
