#include "base/encoding.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "base/text.h"

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

// What may follow within a character. A state is the place of its six bits in an entry of the
// table, which holds the next state for each of them.
enum State : std::uint64_t {
  kBoundary = 0,  // any character may begin
  kOneMore = 6,
  kTwoMore = 12,
  kThreeMore = 18,
  kAfterE0 = 24,  // some bytes would be an overlong form, a surrogate, or too large
  kAfterEd = 30,
  kAfterF0 = 36,
  kAfterF4 = 42,
  kBroken = 48,
};

struct Utf8Table {
  constexpr Utf8Table() {
    for (size_t byte = 0; byte < next.size(); ++byte) {
      for (std::uint64_t state = kBoundary; state <= kBroken; state += kOneMore) {
        next[byte] |= kBroken << state;
      }
      lead[byte] = LeadBit(static_cast<char>(byte));
    }
    Set(kBoundary, 0x00, 0x7F, kBoundary);
    Set(kBoundary, 0xC2, 0xDF, kOneMore);
    Set(kBoundary, 0xE1, 0xEF, kTwoMore);
    Set(kBoundary, 0xE0, 0xE0, kAfterE0);
    Set(kBoundary, 0xED, 0xED, kAfterEd);
    Set(kBoundary, 0xF0, 0xF0, kAfterF0);
    Set(kBoundary, 0xF1, 0xF3, kThreeMore);
    Set(kBoundary, 0xF4, 0xF4, kAfterF4);
    Set(kOneMore, 0x80, 0xBF, kBoundary);
    Set(kTwoMore, 0x80, 0xBF, kOneMore);
    Set(kThreeMore, 0x80, 0xBF, kTwoMore);
    Set(kAfterE0, 0xA0, 0xBF, kOneMore);
    Set(kAfterEd, 0x80, 0x9F, kOneMore);
    Set(kAfterF0, 0x90, 0xBF, kTwoMore);
    Set(kAfterF4, 0x80, 0x8F, kTwoMore);
  }
  constexpr void Set(State from, size_t first, size_t last, State to) {
    for (size_t byte = first; byte <= last; ++byte) {
      next[byte] = (next[byte] & ~(kStateBits << from)) | std::uint64_t{to} << from;
    }
  }

  static constexpr std::uint64_t kStateBits = 0x3F;
  std::array<std::uint64_t, 256> next{};
  std::array<std::uint64_t, 256> lead{};  // a bit for each
};

constexpr Utf8Table kUtf8;

// The next state, in its lowest bits; the others mean nothing, so that nothing else stands between
// one byte and the next.
std::uint64_t NextState(std::uint64_t state, char byte) {
  return kUtf8.next[static_cast<unsigned char>(byte)] >> (state & Utf8Table::kStateBits);
}

}  // namespace

bool Utf8Check::Accept(std::string_view bytes) {
  if (state_ == kBoundary && IsAscii(bytes)) return true;
  std::uint64_t state = state_;
  std::uint64_t leads = leads_;
  for (char byte : bytes) {
    state = NextState(state, byte);
    leads |= kUtf8.lead[static_cast<unsigned char>(byte)];
  }
  state_ = state & Utf8Table::kStateBits;
  leads_ = leads;
  return state_ != kBroken;
}

bool IsValidUtf8(std::string_view bytes) {
  Utf8Check check;
  return check.Accept(bytes) && check.Complete();
}

size_t ValidUtf8Prefix(std::string_view bytes) {
  size_t valid = 0;
  std::uint64_t state = kBoundary;
  for (size_t i = 0; i < bytes.size() && state != kBroken; ++i) {
    state = NextState(state, bytes[i]) & Utf8Table::kStateBits;
    if (state == kBoundary) valid = i + 1;
  }
  return valid;
}

char* Utf8FromWindows1252(std::string_view bytes, char* to) {
  // What becomes of each byte; it has one to three bytes, then zeros, and the last says how many.
  static const auto kTable = [] {
    std::array<std::array<char, 4>, 256> table{};
    for (char32_t byte = 0; byte < table.size(); ++byte) {
      const bool special = byte >= 0x80 && byte < 0xA0;
      std::string character;
      AppendCharacter(character, special ? kWindows1252Upper[byte - 0x80U] : byte);
      character.copy(table[byte].data(), character.size());
      table[byte].back() = static_cast<char>(character.size());
    }
    return table;
  }();
  // Without a branch: the next character lies over what is too much.
  for (char c : bytes) {
    const auto character = kTable[static_cast<unsigned char>(c)];
    std::memcpy(to, character.data(), character.size());
    to += character.back();
  }
  return to;
}

std::string Utf8FromWindows1252(std::string_view bytes) {
  std::string text(RoomForWindows1252(bytes.size()), '\0');
  text.resize(static_cast<size_t>(Utf8FromWindows1252(bytes, text.data()) - text.data()));
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
