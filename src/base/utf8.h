#pragma once
// What every reader of UTF-8 bytes needs to know about them.

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace brindle {

// What some editors put in front of a text in UTF-8.
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

inline std::string_view WithoutUtf8Mark(std::string_view text) {
  return text.starts_with(kUtf8Mark) ? text.substr(kUtf8Mark.size()) : text;
}

// True for a byte that continues a character, false for one that begins a character.
constexpr bool IsTrailByte(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The nearest beginning of a character at or before `byte`; the end of `text` when that lies
// before.
inline size_t CharacterBegin(std::string_view text, size_t byte) {
  byte = std::min(byte, text.size());
  while (byte > 0 && byte < text.size() && IsTrailByte(text[byte])) --byte;
  return byte;
}

// Where the character with number `index` begins; the end of `text` when it has fewer.
inline size_t OffsetOfCharacter(std::string_view text, size_t index) {
  size_t at = 0;
  for (; at < text.size(); ++at) {
    if (!IsTrailByte(text[at]) && index-- == 0) break;
  }
  return at;
}

}  // namespace brindle
