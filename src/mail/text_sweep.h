#pragma once
// Finds the rows whose title holds a text, whatever the case, in one sweep over the texts of all
// rows as they stand: most places are passed over by the two bytes of the wanted text, in either
// case, that are rarest in the texts.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "mail/mail_texts.h"

namespace brindle {

enum class SearchIn {
  kTitles,
  kTitlesAndNumbers,  // and the beginnings of numbers
};

// Some rows of texts, from `first` up to, but without, `end`.
struct TextRowSpan {
  size_t first;
  size_t end;
};

// The rows among `rows` with `lowerText` in their lower-cased title, in ascending order.
// REQUIRES: lowerText is not empty, and valid UTF-8 in lower case; rows.first < rows.end.
std::vector<std::uint32_t> SweepTexts(const MailTexts& texts, TextRowSpan rows,
                                      std::string_view lowerText, SearchIn where);

}  // namespace brindle
