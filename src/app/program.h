#pragma once
// The program as a whole: owns the window, the session, the mail rooms and the settings, and joins
// them. What asks the user (the dialogs) comes from outside, so that the same program runs under a
// test.

#include <QPointer>
#include <memory>
#include <string>

#include "advert/advertisement.h"
#include "aol/screen_name.h"
#include "app/update_desk.h"
#include "irc/channels.h"
#include "irc/connection.h"
#include "irc/irc_servers.h"
#include "irc/line_pump.h"
#include "irc/outgoing_text.h"
#include "irc/output_queue.h"
#include "irc/response_parser.h"
#include "irc/session.h"
#include "irc/who_list.h"
#include "mail/list_loader.h"
#include "mail/list_selection.h"
#include "mail/mail_list.h"
#include "mail/manual_request.h"
#include "mail/request_sender.h"
#include "mail/requests.h"
#include "mail/results.h"
#include "mail/server_commands.h"
#include "mail/server_detection.h"
#include "mail/server_handles.h"
#include "mail/stored_results.h"
#include "platform/chat_socket_qt.h"
#include "platform/clock_qt.h"
#include "platform/native.h"
#include "platform/single_instance.h"
#include "settings/data_folder.h"
#include "settings/options_page.h"
#include "settings/settings_file.h"
#include "settings/stored_state.h"
#include "ui/frm_main.h"
#include "ui/frm_manual_request.h"
#include "ui/frm_results.h"

namespace brindle {

class Program {
 public:
  // `dataFolder` must exist; settings and lists live in it.
  Program(const std::string& dataFolder, Dialogs& dialogs);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // Restores what was set up last time and shows the window. False when the program already runs
  // with this folder (the user has been told) or the window was closed meanwhile: there is nothing
  // more to do.
  bool Open();

  FrmMain& Window() { return window_; }
  MailList& Mails() { return mailList_; }
  Options& Settings() { return stored_.options; }
  const Session& CurrentSession() const { return session_; }

 private:
  bool Form_Load();
  void APP_LOAD();
  void Form_Unload();
  void WarnAboutSmallScreen();
  void TellMissing(LoadResult result, const std::string& path);
  void AttachPanels();
  void ShowManualRequest();
  void ShowResults();
  void CheckForUpdate();
  // Ends every loop that runs, saves, and ends the session; once.
  void Close();

  QtClock clock_;
  QtEventPump events_;
  NativeFiles files_;
  const std::string dataFolder_;
  const DataPaths paths_;
  SettingsFile settings_{files_, paths_.settings};
  SingleInstance instance_;
  StoredState stored_;  // its options are the program's
  Session session_;
  OutputQueue queue_;
  std::unique_ptr<SoundPlayer> sounds_ = NativeSoundPlayer();
  std::unique_ptr<WindowTree> windows_ = NativeWindowTree();
  MailList mailList_;
  WhoList who_;
  // Owned apart, so that the widgets can go while the lists that they show still live.
  std::unique_ptr<FrmMain> ownedWindow_ = std::make_unique<FrmMain>();
  FrmMain& window_ = *ownedWindow_;
  QtChatSocket wsChat_;
  ChatColours display_;
  LinePump pump_;
  Connection connection_;
  ResponseParser parser_;
  Channels channels_;
  IrcServers servers_;
  ServerHandles handles_;
  ServerCommands commands_;
  ServerDetection detection_;
  OutgoingText outgoing_;
  Advertisement advertisement_;
  OptionsPage optionsPage_;
  ListLoader loader_;
  ListSelection selection_;
  RequestSender sender_;
  Requests requests_;
  ManualRequest manualRequest_;
  StoredResults storedResults_;
  Results results_;
  AolClient aol_;
  Dialogs& dialogs_;
  std::unique_ptr<UpdateDesk> updateDesk_;  // made at the first look for an update
  QPointer<FrmManualRequest> manualRequestWindow_;
  QPointer<FrmResults> resultsWindow_;
  bool closed_ = false;
};

}  // namespace brindle
