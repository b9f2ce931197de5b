#include "mail/manual_request.h"

#include <algorithm>

#include "base/text.h"

namespace brindle {

void ManualRequest::cmdAdd_Click(const std::string& handle, const std::string& number) {
  if (IsBlank(handle)) {
    dialogs_.Notice(Icon::kExclamation,
                    "Please enter the servers handle you would like to request the mail from.");
    return;
  }
  if (IsBlank(number)) {
    dialogs_.Notice(Icon::kExclamation, "Please enter the mail number you wish to request.");
    return;
  }
  rows_.push_back({handle, number});
  Tell();
  if (view_ != nullptr) view_->ReadyForNextNumber();
}

void ManualRequest::cmdRemove_Click() {
  if (!dialogs_.Question(Icon::kInformation, "Remove all checked items?")) return;
  std::erase_if(rows_, [](const Row& row) { return row.checked; });
  Tell();
}

void ManualRequest::cmdClear_Click() {
  rows_.clear();
  Tell();
}

void ManualRequest::cmdRequest_Click(const std::string& screenName) {
  if (IsBlank(screenName)) {
    dialogs_.Notice(Icon::kExclamation, "Please enter your AOL screenname.");
    return;
  }
  const Session& session = sender_.CurrentSession();
  const std::string room = session.currentRoom;
  const unsigned stops = stops_;
  // A copy: the user may change the rows during the pauses.
  const std::vector<Row> rows = rows_;
  for (const Row& row : rows) {
    sender_.Send(row.handle, screenName, row.number);
    sender_.PauseAfter();
    if (stops != stops_ || session.currentRoom != room) break;
  }
}

}  // namespace brindle
