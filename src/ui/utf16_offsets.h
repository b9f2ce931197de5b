#pragma once
// Between offsets in UTF-8 text (bytes) and in the toolkit's text (UTF-16 units).

#include <string_view>

#include "base/utf8.h"

namespace brindle {

inline size_t UnitsOfByte(char c) {
  if (IsTrailByte(c)) return 0;
  return static_cast<unsigned char>(c) >= 0xF0U ? 2 : 1;
}

// The number of UTF-16 units of `text`.
inline size_t UnitsIn(std::string_view text) {
  size_t units = 0;
  for (const char c : text) units += UnitsOfByte(c);
  return units;
}

// Where the character begins that holds unit `unit`; the end of `text` when there is none.
inline size_t ByteOfUnit(std::string_view text, size_t unit) {
  size_t units = 0;
  for (size_t at = 0; at < text.size(); ++at) {
    units += UnitsOfByte(text[at]);
    if (units > unit) return at;
  }
  return text.size();
}

}  // namespace brindle
