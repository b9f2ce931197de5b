#include "settings/start_up.h"

#include <vector>

#include "base/text.h"
#include "base/twips.h"
#include "settings/product.h"

namespace brindle {
namespace {

constexpr int kSmallScreenWidth = 800;
constexpr const char* kSmallScreen =
    "You are running in 800x600 resolution. This program runs best in 1024x768, but if you must "
    "run it in 800x600 be sure to maximize it.";

}  // namespace

bool StartUp::Form_Load() {
  if (view_.IsAnotherInstanceRunning()) {
    dialogs_.Notice(Icon::kExclamation, "Brindle is already running.");
    view_.UnloadWindow();
    return false;
  }
  WarnAboutSmallScreen();
  view_.ResetOutputQueue();
  systemMenu_.RemoveSizeCommand();
  view_.CloseChatSocket();
  FillInScreenName();
  APP_LOAD();
  view_.ShowHelpPage();
  view_.SetWindowCaption(VersionText());
  // Last, so that nothing received is shown before the settings are in place. The window may have
  // been closed while a box was open.
  if (!unloaded_) view_.StartReceiveTimer();
  return true;
}

void StartUp::WarnAboutSmallScreen() {
  if (view_.ScreenWidthInTwips() == kSmallScreenWidth * kTwipsPerPixel) {
    dialogs_.Notice(Icon::kCritical, kSmallScreen);
  }
}

void StartUp::FillInScreenName() {
  std::string name = MatchKey(aol_.GetAolScreenName());
  if (name.empty()) name = MatchKey(settings_.ReadSetting("screen name", "last used"));
  view_.SetScreenName(name);
}

void StartUp::APP_LOAD() {
  settingsReadable_ = files_.Read(paths_.settings) || !files_.FileExists(paths_.settings);
  channelsLoaded_ = LoadChannels(files_, dialogs_, state_.channels, paths_.channels, &events_);
  serversLoaded_ = LoadServers(files_, dialogs_, state_.servers, paths_.servers);
  view_.SetNicks(settings_.ReadSetting("nicks", "preferred"),
                 settings_.ReadSetting("nicks", "alternate"));
  SelectLastServer();
  LoadAllOptions();
  restored_ = true;
}

void StartUp::SelectLastServer() {
  const long long row = settings_.ReadNumber("server", "last used", "-1");
  if (row == -1) view_.SelectServer(std::nullopt);
  if (row >= 0 && row < static_cast<long long>(state_.servers.Entries().Size())) {
    view_.SelectServer(static_cast<size_t>(row));
  }
}

void StartUp::LoadAllOptions() {
  const auto loadGroup = [this](const OptionGroup& group, OptionsPart part) {
    LoadOptionGroup(settings_, group, state_.options);
    view_.ShowOptions(part);
  };
  loadGroup(kMiscOptions, OptionsPart::kMisc);
  LoadSoundOptions(settings_, state_.options);
  view_.ShowOptions(OptionsPart::kSound);
  loadGroup(kListOptions, OptionsPart::kList);
  loadGroup(kRoomOptions, OptionsPart::kRoom);
  loadGroup(kFindOptions, OptionsPart::kFind);
  LoadFindDays(settings_, state_.options);
  view_.ShowOptions(OptionsPart::kFindDays);
  LoadColours(settings_, state_.options);
  view_.ShowOptions(OptionsPart::kColours);
}

void StartUp::Form_Unload() {
  if (unloaded_) return;
  unloaded_ = true;
  if (restored_) Save();
  // Nothing is left for a session that never began.
  if (view_.IsDisconnectOffered()) view_.ClickConnectButton();
}

// Failure to write is ignored on purpose: the window is closing, and the old files stand.
void StartUp::Save() {
  const ClosingFields fields = view_.FieldsAtClosing();
  std::vector<Setting> settings = {
      {"nicks", "preferred", fields.nick},
      {"nicks", "alternate", fields.alternateNick},
      {"server", "last used",
       fields.selectedServer ? std::to_string(*fields.selectedServer) : "-1"},
  };
  // What could not be read at start-up is not lost by writing over it.
  if (serversLoaded_ != LoadResult::kUnreadable) {
    SaveServers(files_, state_.servers, paths_.servers);
  }
  if (channelsLoaded_ != LoadResult::kUnreadable) {
    SaveChannels(files_, state_.channels, paths_.channels);
  }
  AppendOptions(state_.options, settings);
  if (settingsReadable_) settings_.WriteSettings(settings);
  if (state_.options.clearFindsOnExit) files_.Remove(paths_.finds);
}

}  // namespace brindle
