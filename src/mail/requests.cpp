#include "mail/requests.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "base/text.h"

namespace brindle {

bool Requests::MayRequest(const std::string& screenName, const std::string& handle) {
  if (!voice_.IsConnected()) return voice_.HasRoom();  // says what is missing
  if (IsBlank(screenName)) {
    dialogs_.Notice(Icon::kInformation, "You must enter an AOL Screen Name for this to work.");
    return false;
  }
  if (IsBlank(handle)) {
    dialogs_.Notice(Icon::kInformation, "You must enter a servers handle for this to work.");
    return false;
  }
  return true;
}

void Requests::cmdRequest_Click(const std::string& screenName, const std::string& handle) {
  // Without a room nobody would hear the requests, and the selection would be gone.
  if (!MayRequest(screenName, handle) || list_.CheckedCount() == 0 || !voice_.HasRoom()) return;
  if (presence_.MayRequestFrom({handle})) Begin(RunOver(screenName, handle), screenName, handle);
}

void Requests::Begin(RequestRun run, const std::string& screenName, const std::string& handle) {
  interrupted_.reset();
  run.sessionLost = [this, screenName, handle](const std::string& room) {
    interrupted_ = {screenName, handle, room, list_.Generation()};
  };
  stack_.Push(std::move(run));
}

void Requests::OfferInterrupted(const std::string& room) {
  if (!interrupted_ || !EqualsIgnoringCase(interrupted_->room, room)) return;
  const Interrupted run = *std::exchange(interrupted_, std::nullopt);
  if (list_.Generation() != run.generation) return;
  std::vector<RowRange> rows;
  for (auto row = list_.NextChecked(0); row; row = list_.NextChecked(*row + 1)) {
    if (!list_.IsRequested(*row)) rows.push_back({*row, *row});
  }
  const std::string mails = std::to_string(rows.size()) + (rows.size() == 1 ? " mail" : " mails");
  if (rows.empty() ||
      !dialogs_.Question(Icon::kInformation, "The requests to " + run.handle +
                                                 " were interrupted. Go on with the " + mails +
                                                 " that are left?")) {
    return;
  }
  if (list_.Generation() == run.generation) RequestRows(rows, run.screenName, run.handle);
}

void Requests::RequestRows(const std::vector<RowRange>& rows, const std::string& screenName,
                           const std::string& handle) {
  if (!MayRequest(screenName, handle) || rows.empty() || !voice_.HasRoom() ||
      !presence_.MayRequestFrom({handle})) {
    return;
  }
  std::vector<RowRange> runs;
  for (const RowRange& range : rows) {
    if (!runs.empty() && runs.back().last + 1 == range.first) {
      runs.back().last = range.last;
    } else {
      runs.push_back(range);
    }
  }
  RequestRun run;
  run.lines = runs.size();
  run.isStale = [this, generation = list_.Generation()] {
    return list_.Generation() != generation;
  };
  run.next = [this, runs, next = size_t{0}, screenName,
              handle]() mutable -> std::optional<RequestLine> {
    if (next == runs.size()) return std::nullopt;
    const auto [first, last] = runs[next++];
    std::string what(list_.Number(first));
    if (last > first) what.append("-").append(list_.Number(last));
    const MailList::BulkChange bulk(list_, MailList::Header::kStays);
    if (options_.deselectAfterRequested) list_.UncheckRange(first, last);
    return LineOf({what, first, last}, screenName, handle);
  };
  Begin(std::move(run), screenName, handle);
}

RequestLine Requests::LineOf(const RequestRuns::Request& request, const std::string& screenName,
                             const std::string& handle) {
  list_.MarkRequested(request.firstRow, request.lastRow);
  RequestLine line{RequestText(handle, screenName, request.what), request.what, {}};
  line.takeBack = [this, generation = list_.Generation(), first = request.firstRow,
                   last = request.lastRow] {
    if (list_.Generation() == generation) list_.TakeBackRequested(first, last);
  };
  return line;
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
      if (request) return LineOf(*request, screenName, handle);
    }
    return std::nullopt;
  };
  return run;
}

}  // namespace brindle
