#pragma once
// Between offsets in UTF-8 text (bytes) and in the toolkit's text (UTF-16 units).

#include <algorithm>
#include <string_view>

namespace brindle {

inline size_t UnitsOfByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if ((byte & 0xC0U) == 0x80U) return 0;
  return byte >= 0xF0U ? 2 : 1;
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

// The nearest beginning of a character at or before `byte`.
inline size_t CharacterBegin(std::string_view text, size_t byte) {
  byte = std::min(byte, text.size());
  while (byte > 0 && byte < text.size() && UnitsOfByte(text[byte]) == 0) --byte;
  return byte;
}

}  // namespace brindle
