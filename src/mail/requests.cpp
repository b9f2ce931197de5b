#include "mail/requests.h"

#include <cstdint>
#include <optional>

#include "base/text.h"
#include "mail/request_runs.h"

namespace brindle {

void Requests::cmdRequest_Click(const std::string& screenName, const std::string& handle) {
  const Session& session = sender_.CurrentSession();
  if (stopped_) return;
  if (session.connectionState == ConnectionState::kDisconnected) {
    view_.ShowHint("Connect to a server first: requests are said in a room.");
    return;
  }
  if (IsBlank(screenName)) {
    dialogs_.Notice(Icon::kInformation, "You must enter an AOL Screen Name for this to work.");
    return;
  }
  if (IsBlank(handle)) {
    dialogs_.Notice(Icon::kInformation, "You must enter a servers handle for this to work.");
    return;
  }
  if (session.currentRoom.empty()) {
    // Nobody would hear the requests, and the selection would be gone.
    view_.ShowHint("Enter a room first: requests are said in the current room.");
    return;
  }
  const int sent = RequestChecked(screenName, handle);
  if (sent > 0) view_.ShowHint("Requests sent: " + std::to_string(sent));
}

int Requests::RequestChecked(const std::string& screenName, const std::string& handle) {
  const AfterRequest after =
      options_.deselectAfterRequested ? AfterRequest::kDeselect : AfterRequest::kKeepChecked;
  const std::uint64_t generation = list_.Generation();
  const Session& session = sender_.CurrentSession();
  const std::string room = session.currentRoom;
  const size_t rows = list_.Size();
  RequestRuns runs;
  int sent = 0;
  for (std::optional<size_t> row = list_.NextChecked(0); row && *row < rows;
       row = list_.NextChecked(*row + 1)) {
    const std::optional<std::string> what = runs.Step(list_, *row, after);
    if (!what) continue;
    sender_.Send(handle, screenName, *what);
    ++sent;
    view_.ShowHint("Requesting " + *what + " (request " + std::to_string(sent) + ")...");
    sender_.PauseAfter();
    const bool sameRoom =
        session.currentRoom == room && session.connectionState != ConnectionState::kDisconnected;
    if (stopped_ || !sameRoom || list_.Generation() != generation) break;
  }
  return sent;
}

}  // namespace brindle
