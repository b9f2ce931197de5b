#pragma once
// "Request Selected": asks the server for every checked mail, one line for each mail or run of
// neighbouring mails.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/dialogs.h"
#include "irc/room_voice.h"
#include "mail/list_selection.h"
#include "mail/mail_list.h"
#include "mail/request_runs.h"
#include "mail/request_stack.h"
#include "mail/server_presence.h"
#include "settings/options.h"

namespace brindle {

class Requests {
 public:
  Requests(MailList& list, RequestStack& stack, const RoomVoice& voice,
           const ServerPresence& presence, const Options& options, Dialogs& dialogs)
      : list_(list),
        stack_(stack),
        voice_(voice),
        presence_(presence),
        options_(options),
        dialogs_(dialogs) {}

  // Begins a run over the rows that are checked, and says its first line. Rows that are not reached
  // keep their checks. The title header is not refreshed.
  void cmdRequest_Click(const std::string& screenName, const std::string& handle);

  // The same for the given rows, checked or not, in ascending order; neighbours are one request.
  void RequestRows(const std::vector<RowRange>& rows, const std::string& screenName,
                   const std::string& handle);

  // The room has been entered: where the session was lost in the middle of a run over the list that
  // is still loaded, asks whether to go on with the rows that were not requested.
  void OfferInterrupted(const std::string& room);

 private:
  struct Interrupted {
    std::string screenName;
    std::string handle;
    std::string room;
    std::uint64_t generation;
  };

  // Tells the user what is missing.
  bool MayRequest(const std::string& screenName, const std::string& handle);
  // Begins a run that is remembered when it is interrupted.
  void Begin(RequestRun run, const std::string& screenName, const std::string& handle);
  RequestRun RunOver(const std::string& screenName, const std::string& handle);
  // What is said for `request`, whose rows are marked, and checked again if it does not arrive.
  RequestLine LineOf(const RequestRuns::Request& request, const std::string& screenName,
                     const std::string& handle);

  MailList& list_;
  RequestStack& stack_;
  const RoomVoice& voice_;
  const ServerPresence& presence_;
  const Options& options_;
  Dialogs& dialogs_;
  std::optional<Interrupted> interrupted_;
};

}  // namespace brindle
