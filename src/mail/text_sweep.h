#pragma once
// Finds the rows whose lower-cased title holds a text, in one sweep over the titles of all rows:
// most places are passed over by the two bytes of the wanted text that are rarest in the titles.

#include <cstdint>
#include <string_view>
#include <vector>

#include "mail/mail_texts.h"

namespace brindle {

// The rows of `texts` with `lowerText` in their lower-cased title, in ascending order. A place that
// reaches into the next title is none. REQUIRES: the texts are settled; lowerText is not empty.
std::vector<std::uint32_t> SweepTitles(const MailTexts& texts, std::string_view lowerText);

}  // namespace brindle
