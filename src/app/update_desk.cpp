#include "app/update_desk.h"

#include <utility>

#include "platform/clock_qt.h"
#include "platform/program_starter_qt.h"
#include "platform/signature.h"
#include "platform/update_folder_qt.h"

namespace brindle {

struct UpdateDesk::Works {
  Works(UpdateView& view, const SettingsFile& settings, Dialogs& dialogs,
        const UpdateDeskOptions& options, std::function<void()> endProgram)
      : folder(options.dataFolder),
        iNet(NativeHttpClient(options.patienceMilliseconds)),
        updater(
            {*iNet, folder, dialogs, events, std::bind_front(StartProgramIn, options.programFolder),
             options.key.empty() ? CheckSignature() : std::bind_front(IsSignedBy, options.key)},
            view, settings, ReadUpdateServer(options.server), options.own, std::move(endProgram)) {}

  QtEventPump events;
  QtUpdateFolder folder;
  std::unique_ptr<NetworkHttpClient> iNet;
  Updater updater;
};

UpdateDesk::UpdateDesk(QWidget* parent, const SettingsFile& settings, Dialogs& dialogs,
                       const UpdateDeskOptions& options, std::function<void()> endProgram)
    : window_(new FrmUpdater(parent)),
      works_(std::make_shared<Works>(*window_, settings, dialogs, options, std::move(endProgram))) {
  const std::weak_ptr<Works> works = works_;
  works_->iNet->SetListener([works](HttpState state) {
    if (const auto held = works.lock()) held->updater.iNet_StateChanged(state);
  });
  // A stopped updater shows nothing, so it may outlive its window.
  QObject::connect(window_.data(), &QObject::destroyed, [works] {
    if (const auto held = works.lock()) held->updater.Stop();
  });
  window_->Attach(works_->updater);
}

UpdateDesk::~UpdateDesk() {
  Stop();
  delete window_;
}

void UpdateDesk::SetConnection(const ConnectionOptions& options, const std::string& password) {
  works_->iNet->SetConnection(options, password);
}

void UpdateDesk::cmdCheckForUpdate_Click() {
  if (window_ != nullptr) window_->ShowModal();
}

void UpdateDesk::Stop() { works_->updater.Stop(); }

}  // namespace brindle
