#pragma once
// What happens between the opening of the main window and its closing: everything that the user
// set up last time is put back in a fixed order, and saved again at the end.

#include <optional>
#include <string>

#include "aol/aol_link.h"
#include "base/dialogs.h"
#include "base/files.h"
#include "base/observed_list.h"
#include "irc/irc_servers.h"
#include "settings/data_folder.h"
#include "settings/options.h"
#include "settings/settings_file.h"
#include "settings/stored_lists.h"

namespace brindle {

class SystemMenu {
 public:
  virtual ~SystemMenu() = default;
  // Takes the Size command out of the main window's system menu.
  virtual void RemoveSizeCommand() = 0;
};

// The groups of controls on the options page, each shown after its options have been loaded.
enum class OptionsPart { kMisc, kSound, kList, kRoom, kFind, kFindDays, kColours };

// What the main window holds when it is closed.
struct ClosingFields {
  std::string nick;                      // txtConnectNick
  std::string alternateNick;             // txtAlternateNick
  std::optional<size_t> selectedServer;  // row of cmbConnectServer
};

// The machine and the main window, as start-up and shutdown use them.
class StartUpView {
 public:
  virtual ~StartUpView() = default;
  virtual bool IsAnotherInstanceRunning() = 0;
  virtual int ScreenWidthInTwips() = 0;
  virtual void UnloadWindow() = 0;
  // Empties the display queue and closes the chat socket, so that the session starts idle.
  virtual void ResetOutputQueue() = 0;
  virtual void CloseChatSocket() = 0;
  virtual void SetScreenName(const std::string& name) = 0;  // txtInfoAOLSN
  virtual void SetNicks(const std::string& nick, const std::string& alternateNick) = 0;
  // Selects the row of cmbConnectServer, which shows its port.
  virtual void SelectServer(std::optional<size_t> row) = 0;
  // The options of this part have been loaded: show them and let them take effect.
  virtual void ShowOptions(OptionsPart part) = 0;
  virtual void ShowHelpPage() = 0;
  virtual void SetWindowCaption(const std::string& text) = 0;
  virtual void StartReceiveTimer() = 0;  // tmrProcess
  virtual ClosingFields FieldsAtClosing() = 0;
  // True when cmdConnect shows "Disconnect"; clicking it then ends the session.
  virtual bool IsDisconnectOffered() = 0;
  virtual void ClickConnectButton() = 0;
};

// What start-up fills and shutdown saves; none of it is owned, and all must outlive the user.
struct LastingState {
  Options& options;
  ObservedList<std::string>& channels;
  IrcServers& servers;
};

class StartUp {
 public:
  StartUp(StartUpView& view, LastingState state, Files& files, const DataPaths& paths,
          Dialogs& dialogs, SystemMenu& systemMenu, AolLink& aol, EventPump& events)
      : view_(view),
        state_(state),
        files_(files),
        paths_(paths),
        settings_(files, paths.settings),
        dialogs_(dialogs),
        systemMenu_(systemMenu),
        aol_(aol),
        events_(events) {}

  // False when another instance is running: the user has been told, the window is being unloaded,
  // and nothing else has happened or will be written.
  bool Form_Load();

  // Saves and ends the session, once. A window that was never completely set up saves nothing.
  void Form_Unload();

 private:
  void WarnAboutSmallScreen();
  void FillInScreenName();
  void APP_LOAD();
  void SelectLastServer();
  void LoadAllOptions();
  void Save();

  StartUpView& view_;
  LastingState state_;
  Files& files_;
  DataPaths paths_;
  SettingsFile settings_;
  Dialogs& dialogs_;
  SystemMenu& systemMenu_;
  AolLink& aol_;
  EventPump& events_;
  bool settingsReadable_ = true;
  LoadResult channelsLoaded_ = LoadResult::kMissing;
  LoadResult serversLoaded_ = LoadResult::kMissing;
  bool restored_ = false;  // APP_LOAD is done, so there is something to save
  bool unloaded_ = false;
};

}  // namespace brindle
