#pragma once
// Everything about mails: joins the list, its loading, selecting, searching and requesting, the
// mail servers and their commands, and the advertisement to the main window; opens the two windows
// for searching and for requests by hand.

#include <QPointer>

#include "advert/advertisement.h"
#include "app/chat_desk.h"
#include "app/machine.h"
#include "mail/list_loader.h"
#include "mail/list_selection.h"
#include "mail/mail_list.h"
#include "mail/manual_request.h"
#include "mail/request_stack.h"
#include "mail/requests.h"
#include "mail/results.h"
#include "mail/server_commands.h"
#include "mail/server_detection.h"
#include "mail/server_handles.h"
#include "ui/frm_main.h"
#include "ui/frm_manual_request.h"
#include "ui/frm_results.h"

namespace brindle {

class MailDesk {
 public:
  // All must outlive the desk. `webHost` is named in the advertisement.
  MailDesk(FrmMain& window, ChatDesk& chat, const StoredThings& stored, const Machine& machine,
           const std::string& webHost);

  MailList& Mails() { return mailList_; }

  // Ends every loop that runs and keeps what its windows have to keep.
  void Close();

 private:
  void ShowManualRequest();
  void ShowResults();

  FrmMain& window_;
  ChatDesk& chat_;
  SettingsFile& settings_;
  MailList mailList_;
  ServerHandles handles_;
  ServerCommands commands_;
  ServerDetection detection_;
  Advertisement advertisement_;
  RecentLists recentLists_;
  ListLoader loader_;
  ListSelection selection_;
  RequestStack stack_;
  ServerPresence presence_;
  Requests requests_;
  ManualRequest manualRequest_;
  Results results_;
  QPointer<FrmManualRequest> manualRequestWindow_;
  QPointer<FrmResults> resultsWindow_;
};

}  // namespace brindle
