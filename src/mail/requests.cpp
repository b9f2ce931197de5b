#include "mail/requests.h"

#include <cstdint>
#include <memory>
#include <optional>

#include "base/text.h"
#include "mail/request_runs.h"

namespace brindle {

void Requests::cmdRequest_Click(const std::string& screenName, const std::string& handle) {
  if (!voice_.IsConnected()) {
    voice_.HasRoom();  // says what is missing
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
  // Without a room nobody would hear the requests, and the selection would be gone.
  if (list_.CheckedCount() == 0 || !voice_.HasRoom()) return;
  stack_.Push(RunOver(screenName, handle));
}

RequestRun Requests::RunOver(const std::string& screenName, const std::string& handle) {
  struct Walk {
    RequestRuns runs;
    size_t next = 0;
    size_t rows = 0;
    std::uint64_t generation = 0;
    AfterRequest after = AfterRequest::kKeepChecked;
  };
  auto walk = std::make_shared<Walk>();
  walk->rows = list_.Size();
  walk->generation = list_.Generation();
  if (options_.deselectAfterRequested) walk->after = AfterRequest::kDeselect;

  RequestRun run;
  run.lines = CountRequests(list_);
  if (IsLastRowAlone(list_)) {
    run.afterword =
        "The last mail is only asked for together with the one before it; check that one too.";
  }
  run.isStale = [this, walk] { return list_.Generation() != walk->generation; };
  run.next = [this, walk, screenName, handle]() -> std::optional<RequestLine> {
    const MailList::BulkChange bulk(list_, MailList::Header::kStays);
    for (auto row = list_.NextChecked(walk->next); row && *row < walk->rows;
         row = list_.NextChecked(walk->next)) {
      walk->next = *row + 1;
      const auto request = walk->runs.Step(list_, *row, walk->after);
      if (!request) continue;
      RequestLine line{RequestText(handle, screenName, request->what), request->what, {}};
      line.takeBack = [this, walk, first = request->firstRow, last = request->lastRow] {
        if (list_.Generation() == walk->generation) list_.CheckRange(first, last);
      };
      return line;
    }
    return std::nullopt;
  };
  return run;
}

}  // namespace brindle
