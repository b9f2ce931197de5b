#include "base/encoding.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace brindle {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Windows-1252, bytes 0x80 to 0x9F; the other bytes are the characters of the same number.
constexpr std::array<char32_t, 32> kWindows1252Upper = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendCharacter(std::string& out, char32_t c) {
  const auto byte = [&out](char32_t value) { out += static_cast<char>(value); };
  if (c < 0x80) {
    byte(c);
  } else if (c < 0x800) {
    byte(0xC0 | (c >> 6));
    byte(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    byte(0xE0 | (c >> 12));
    byte(0x80 | ((c >> 6) & 0x3F));
    byte(0x80 | (c & 0x3F));
  } else {
    byte(0xF0 | (c >> 18));
    byte(0x80 | ((c >> 12) & 0x3F));
    byte(0x80 | ((c >> 6) & 0x3F));
    byte(0x80 | (c & 0x3F));
  }
}

// The length of the well-formed sequence at the start of `bytes`, 0 when there is none.
size_t SequenceLength(std::string_view bytes) {
  const auto at = [&bytes](size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const auto continues = [&](size_t i, unsigned low = 0x80, unsigned high = 0xBF) {
    return i < bytes.size() && at(i) >= low && at(i) <= high;
  };
  const unsigned lead = at(0);
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return continues(1) ? 2 : 0;
  if (lead >= 0xE0 && lead <= 0xEF) {
    const unsigned low = lead == 0xE0 ? 0xA0 : 0x80;
    const unsigned high = lead == 0xED ? 0x9F : 0xBF;
    return continues(1, low, high) && continues(2) ? 3 : 0;
  }
  if (lead >= 0xF0 && lead <= 0xF4) {
    const unsigned low = lead == 0xF0 ? 0x90 : 0x80;
    const unsigned high = lead == 0xF4 ? 0x8F : 0xBF;
    return continues(1, low, high) && continues(2) && continues(3) ? 4 : 0;
  }
  return 0;
}

}  // namespace

size_t ValidUtf8Prefix(std::string_view bytes) {
  size_t i = 0;
  while (i < bytes.size()) {
    // Most text is ASCII: eight bytes at a time as long as no top bit is set.
    while (i + 8 <= bytes.size()) {
      std::uint64_t word = 0;
      std::memcpy(&word, bytes.data() + i, sizeof word);
      if ((word & 0x8080808080808080U) != 0) break;
      i += 8;
    }
    if (i == bytes.size()) break;
    const size_t length = SequenceLength(bytes.substr(i));
    if (length == 0) return i;
    i += length;
  }
  return i;
}

bool IsValidUtf8(std::string_view bytes) { return ValidUtf8Prefix(bytes) == bytes.size(); }

std::string Utf8FromWindows1252(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const bool special = byte >= 0x80 && byte < 0xA0;
    AppendCharacter(text, special ? kWindows1252Upper[byte - 0x80U] : byte);
  }
  return text;
}

std::string Utf8FromUtf16(std::string_view bytes, ByteOrder order) {
  const size_t high = order == ByteOrder::kBigEndian ? 0 : 1;
  const auto unit = [&](size_t i) {
    return static_cast<char32_t>((static_cast<unsigned char>(bytes[i + high]) << 8U) |
                                 static_cast<unsigned char>(bytes[i + 1 - high]));
  };
  std::string text;
  text.reserve(bytes.size() / 2);
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    char32_t c = unit(i);
    const bool leads = c >= 0xD800 && c < 0xDC00;
    const bool trails = c >= 0xDC00 && c < 0xE000;
    if (leads && i + 3 < bytes.size() && unit(i + 2) >= 0xDC00 && unit(i + 2) < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (unit(i + 2) - 0xDC00);
      i += 2;
    } else if (leads || trails) {
      c = kReplacement;
    }
    AppendCharacter(text, c);
  }
  return text;
}

std::string Utf8FromMarked(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE")) {
    return Utf8FromUtf16(bytes.substr(2), ByteOrder::kLittleEndian);
  }
  if (bytes.starts_with("\xFE\xFF")) return Utf8FromUtf16(bytes.substr(2), ByteOrder::kBigEndian);
  return std::string(bytes);
}

std::string DecodeReceived(std::string_view line) {
  return IsValidUtf8(line) ? std::string(line) : Utf8FromWindows1252(line);
}

}  // namespace brindle
