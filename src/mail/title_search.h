#pragma once
// Finds the mails whose title holds a text, whatever the case of either.

#include <cstdint>
#include <string_view>
#include <vector>

#include "mail/mail_list.h"

namespace brindle {

// The rows whose lower-cased title contains `lowerText`, which must be lower-cased already (see
// LowerCase) and not empty. The text is taken as it is: no wildcards, no trimming.
RowSet RowsWithTitle(const MailList& list, std::string_view lowerText);

// The same as numbers of rows, in ascending order.
std::vector<std::uint32_t> RowNumbersWithTitle(const MailList& list, std::string_view lowerText);

// What a filter lets through, in ascending order: the rows whose title contains `text`, whatever
// the case, and those whose number begins with it where it is all digits. `text` must not be empty.
std::vector<std::uint32_t> RowNumbersMatching(const MailList& list, std::string_view text);

}  // namespace brindle
