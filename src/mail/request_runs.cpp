#include "mail/request_runs.h"

#include <utility>

namespace brindle {

std::optional<RequestRuns::Request> RequestRuns::Step(MailList& list, size_t row,
                                                      AfterRequest after) {
  if (row >= list.Size() || !list.IsChecked(row)) return std::nullopt;
  const bool isLast = row + 1 == list.Size();
  if (isLast && !first_) return std::nullopt;
  if (after == AfterRequest::kDeselect) list.SetChecked(row, false);

  // An observer has been told: the list may be another one by now.
  if (row >= list.Size()) return std::nullopt;
  const std::string number(list.Number(row));
  if (row + 1 < list.Size() && list.IsChecked(row + 1)) {
    if (!first_) first_ = {number, row};
    return std::nullopt;
  }
  if (!first_) return Request{number, row, row};
  const Start start = *std::exchange(first_, std::nullopt);
  return Request{start.number + "-" + number, start.row, row};
}

size_t CountRequests(const MailList& list) {
  size_t requests = 0;
  for (auto row = list.NextChecked(0); row; row = list.NextChecked(*row + 1)) {
    const bool runGoesOn = *row + 1 < list.Size() && list.IsChecked(*row + 1);
    if (!runGoesOn) ++requests;
  }
  return IsLastRowAlone(list) ? requests - 1 : requests;
}

bool IsLastRowAlone(const MailList& list) {
  const size_t rows = list.Size();
  return rows > 0 && list.IsChecked(rows - 1) && (rows == 1 || !list.IsChecked(rows - 2));
}

}  // namespace brindle
