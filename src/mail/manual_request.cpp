#include "mail/manual_request.h"

#include <algorithm>
#include <optional>
#include <utility>

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
  if (rows_.empty() || !voice_.HasRoom()) return;
  std::vector<std::string> handles;
  for (const Row& row : rows_) handles.push_back(row.handle);
  if (!presence_.MayRequestFrom(handles)) return;
  RequestRun run;
  run.lines = rows_.size();
  run.owner = this;
  // A copy: the user may change the rows while the run goes.
  run.next = [rows = rows_, screenName, row = size_t{0}]() mutable -> std::optional<RequestLine> {
    if (row == rows.size()) return std::nullopt;
    const Row& next = rows[row++];
    return RequestLine{RequestText(next.handle, screenName, next.number), next.number, {}};
  };
  stack_.Push(std::move(run));
}

}  // namespace brindle
