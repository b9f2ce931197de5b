#pragma once
// "Request Selected": asks the server for every checked mail, one line for each mail or run of
// neighbouring mails.

#include <cstdint>
#include <string>
#include <vector>

#include "base/dialogs.h"
#include "irc/room_voice.h"
#include "mail/list_selection.h"
#include "mail/mail_list.h"
#include "mail/request_runs.h"
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

  // The same for the given rows, checked or not, in ascending order; neighbours are one request.
  void RequestRows(const std::vector<RowRange>& rows, const std::string& screenName,
                   const std::string& handle);

 private:
  // Tells the user what is missing.
  bool MayRequest(const std::string& screenName, const std::string& handle);
  RequestRun RunOver(const std::string& screenName, const std::string& handle);
  // What is said for `request`, whose rows are marked, and checked again if it does not arrive.
  RequestLine LineOf(const RequestRuns::Request& request, const std::string& screenName,
                     const std::string& handle);

  MailList& list_;
  RequestStack& stack_;
  const RoomVoice& voice_;
  const Options& options_;
  Dialogs& dialogs_;
};

}  // namespace brindle
