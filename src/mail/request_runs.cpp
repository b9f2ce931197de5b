#include "mail/request_runs.h"

#include <utility>

namespace brindle {

std::optional<std::string> RequestRuns::Step(MailList& list, size_t row, AfterRequest after) {
  if (row >= list.Size() || !list.IsChecked(row)) return std::nullopt;
  if (after == AfterRequest::kDeselect) list.SetChecked(row, false);

  // An observer has been told: the list may be another one by now.
  if (row >= list.Size()) return std::nullopt;
  const bool isLast = row + 1 == list.Size();
  const std::string number(list.Number(row));
  if (!isLast && list.IsChecked(row + 1)) {
    if (!first_) first_ = number;
    return std::nullopt;
  }
  if (first_) return *std::exchange(first_, std::nullopt) + "-" + number;
  if (isLast) return std::nullopt;
  return number;
}

}  // namespace brindle
