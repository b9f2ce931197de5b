#include "app/update_desk.h"

#include <utility>

namespace brindle {

UpdateDesk::UpdateDesk(QWidget* parent, const SettingsFile& settings, Dialogs& dialogs,
                       const UpdateDeskOptions& options, std::function<void()> endProgram)
    : folder_(options.dataFolder),
      iNet_(options.patienceMilliseconds),
      window_(parent),
      updater_({iNet_, folder_, sha256_, starter_, dialogs, events_}, window_, settings,
               ReadUpdateServer(options.server), options.own, std::move(endProgram)) {
  iNet_.SetListener(updater_);
  window_.Attach(updater_);
}

}  // namespace brindle
