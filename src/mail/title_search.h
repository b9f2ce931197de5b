#pragma once
// Finds the mails whose title holds a text, whatever the case of either.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "mail/mail_list.h"
#include "mail/text_sweep.h"

namespace brindle {

// The rows whose lower-cased title contains `lowerText`, which must be lower-cased already (see
// LowerCase) and not empty. The text is taken as it is: no wildcards, no trimming.
RowSet RowsWithTitle(const MailList& list, std::string_view lowerText);

// The same as numbers of rows, in ascending order.
std::vector<std::uint32_t> RowNumbersWithTitle(const MailList& list, std::string_view lowerText);

// What a filter lets through: the rows whose title contains a text, whatever the case, and those
// whose number begins with it where it is all digits. It looks at a list bit by bit, so that nobody
// need wait for the whole of a long one.
class RowFilter {
 public:
  // `list` must outlive this and keep its rows. `text` must not be empty.
  RowFilter(const MailList& list, std::string_view text);

  // Looks at the next rows, with about so many bytes of text, or at all that are left. Returns
  // those let through, in ascending order.
  std::vector<std::uint32_t> Next(size_t bytes = std::numeric_limits<size_t>::max());
  // The rows before this one were looked at.
  size_t NextRow() const { return nextRow_; }
  bool IsDone() const { return nextRow_ == list_.Size(); }

 private:
  const MailList& list_;
  std::string lowerText_;
  SearchIn where_;
  bool inParts_;
  size_t nextRow_ = 0;
};

}  // namespace brindle
