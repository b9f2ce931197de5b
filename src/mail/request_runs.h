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
  // Handles one row and returns what to ask for now: a number, or a range "first-last". Nothing
  // when the row is not checked or the run goes on. Rows must come in ascending order; rows that
  // are not checked need not come at all (MailList::NextChecked finds the others). A row beyond the
  // end of the list is ignored.
  //
  // A last row that is checked on its own is never asked for, on purpose.
  std::optional<std::string> Step(MailList& list, size_t row, AfterRequest after);

 private:
  std::optional<std::string> first_;  // the first number of the open run
};

}  // namespace brindle
