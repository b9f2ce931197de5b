#pragma once
// "Request Selected": asks the server for every checked mail, one line for each mail or run of
// neighbouring mails.

#include <string>

#include "base/dialogs.h"
#include "irc/room_voice.h"
#include "mail/mail_list.h"
#include "mail/request_stack.h"
#include "settings/options.h"

namespace brindle {

class Requests {
 public:
  Requests(MailList& list, RequestStack& stack, const RoomVoice& voice, const Options& options,
           Dialogs& dialogs)
      : list_(list), stack_(stack), voice_(voice), options_(options), dialogs_(dialogs) {}

  // Begins a run over the rows that are checked, and says its first line. Rows that are not reached
  // keep their checks. The title header is not refreshed.
  void cmdRequest_Click(const std::string& screenName, const std::string& handle);

 private:
  RequestRun RunOver(const std::string& screenName, const std::string& handle);

  MailList& list_;
  RequestStack& stack_;
  const RoomVoice& voice_;
  const Options& options_;
  Dialogs& dialogs_;
};

}  // namespace brindle
