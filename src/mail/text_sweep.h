#pragma once
// Finds the rows whose title holds a text, whatever the case, in one sweep over the texts of all
// rows as they stand: most places are passed over by the two bytes of the wanted text, in either
// case, that are rarest in the texts.

#include <cstdint>
#include <string_view>
#include <vector>

#include "mail/mail_texts.h"

namespace brindle {

enum class SearchIn {
  kTitles,
  kTitlesAndNumbers,  // and the beginnings of numbers
};

// The rows of `texts` with `lowerText` in their lower-cased title, in ascending order.
// REQUIRES: lowerText is not empty, and valid UTF-8 in lower case.
std::vector<std::uint32_t> SweepTexts(const MailTexts& texts, std::string_view lowerText,
                                      SearchIn where);

}  // namespace brindle
