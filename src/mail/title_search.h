#pragma once
// Finds the mails whose title holds a text, whatever the case of either.

#include <string_view>

#include "mail/mail_list.h"

namespace brindle {

// The rows whose lower-cased title contains `lowerText`, which must be lower-cased already (see
// LowerCase) and not empty. The text is taken as it is: no wildcards, no trimming.
RowSet RowsWithTitle(const MailList& list, std::string_view lowerText);

}  // namespace brindle
