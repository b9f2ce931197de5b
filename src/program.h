#pragma once
// The program as a whole: owns the window, the session and the mail rooms, and joins them. What
// asks the user (the dialogs) comes from outside, so that the same program runs under a test.

#include <QPointer>
#include <memory>
#include <string>
#include <vector>

#include "advert/advertisement.h"
#include "app/options.h"
#include "irc/channels.h"
#include "irc/connection.h"
#include "irc/line_pump.h"
#include "irc/outgoing_text.h"
#include "irc/output_queue.h"
#include "irc/response_parser.h"
#include "irc/server_detection.h"
#include "irc/session.h"
#include "irc/who_list.h"
#include "mail/list_loader.h"
#include "mail/list_selection.h"
#include "mail/mail_list.h"
#include "mail/manual_request.h"
#include "mail/request_sender.h"
#include "mail/requests.h"
#include "mail/server_commands.h"
#include "mail/server_handles.h"
#include "platform/chat_socket_qt.h"
#include "platform/clock_qt.h"
#include "platform/sound_player_native.h"
#include "ui/frm_main.h"
#include "ui/frm_manual_request.h"

namespace brindle {

// What the fields hold when the window opens.
struct StartState {
  std::string nick;
  std::string alternateNick;
  std::string server;
  std::string port;
  std::vector<std::string> channels;
  std::string screenName;
};

class Program {
 public:
  Program(const StartState& start, Dialogs& dialogs);
  ~Program();

  FrmMain& Window() { return window_; }
  MailList& Mails() { return mailList_; }
  Options& Settings() { return options_; }
  const Session& CurrentSession() const { return session_; }

 private:
  void Form_Load(const StartState& start);
  void ShowManualRequest();
  // Ends every loop that runs and the session.
  void Form_Unload();

  QtClock clock_;
  QtEventPump events_;
  Options options_;
  Session session_;
  OutputQueue queue_;
  std::unique_ptr<SoundPlayer> sounds_ = NativeSoundPlayer();
  MailList mailList_;
  WhoList who_;
  FrmMain window_;
  QtChatSocket wsChat_;
  ChatDisplay display_;
  LinePump pump_;
  Connection connection_;
  ResponseParser parser_;
  Channels channels_;
  ServerHandles handles_;
  ServerCommands commands_;
  ServerDetection detection_;
  OutgoingText outgoing_;
  Advertisement advertisement_;
  ListLoader loader_;
  ListSelection selection_;
  RequestSender sender_;
  Requests requests_;
  ManualRequest manualRequest_;
  QPointer<FrmManualRequest> manualRequestWindow_;
  bool unloaded_ = false;
};

}  // namespace brindle
