#pragma once
// Folds the checked rows of a mail list into requests: neighbouring rows become one range. The
// caller walks the rows and may let window events run between two steps; each step looks at the
// list as it is then.

#include <cstddef>
#include <optional>
#include <string>

#include "mail/mail_list.h"

namespace brindle {

enum class AfterRequest { kKeepChecked, kDeselect };

class RequestRuns {
 public:
  struct Request {
    std::string what;  // a number, or a range "first-last"
    size_t firstRow;   // of the list
    size_t lastRow;
  };

  // Handles one row and returns what to ask for now; nothing when the row is not checked or the run
  // goes on. Rows must come in ascending order; rows that are not checked need not come at all
  // (MailList::NextChecked finds the others). A row beyond the end of the list is ignored.
  //
  // A last row that is checked on its own is never asked for, on purpose, and keeps its check.
  std::optional<Request> Step(MailList& list, size_t row, AfterRequest after);

 private:
  struct Start {
    std::string number;
    size_t row;
  };
  std::optional<Start> first_;  // of the open run
};

// How many requests the checked rows of `list` make.
size_t CountRequests(const MailList& list);

// True when the last row is checked on its own.
bool IsLastRowAlone(const MailList& list);

}  // namespace brindle
