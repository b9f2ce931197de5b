#pragma once
// The update check as a whole: joins the window, the updater and what the machine gives them.

#include <functional>

#include "platform/clock_qt.h"
#include "platform/http_client_qt.h"
#include "platform/program_starter_qt.h"
#include "platform/sha256_qt.h"
#include "platform/update_folder_qt.h"
#include "ui/frm_updater.h"
#include "update/updater.h"

namespace brindle {

struct UpdateDeskOptions {
  std::string dataFolder;  // where the folder "update" is made
  std::string server;      // see ReadUpdateServer
  Version own;             // the version that runs
  int patienceMilliseconds = QtHttpClient::kPatienceMilliseconds;
};

class UpdateDesk {
 public:
  // `endProgram` is called once the updater program has been started. `parent` may be null, and
  // must outlive this.
  UpdateDesk(QWidget* parent, const SettingsFile& settings, Dialogs& dialogs,
             const UpdateDeskOptions& options, std::function<void()> endProgram);

  // The main window's button "Check for update".
  void cmdCheckForUpdate_Click() { window_.ShowModal(); }

  // The program ends: drops a running transfer. To be called before the event loop is left.
  void Stop() { updater_.Stop(); }

  FrmUpdater& Window() { return window_; }

 private:
  QtEventPump events_;
  QtUpdateFolder folder_;
  QtSha256 sha256_;
  QtProgramStarter starter_;
  QtHttpClient iNet_;
  FrmUpdater window_;
  Updater updater_;
};

}  // namespace brindle
