#pragma once
// From bytes of unknown origin (the network, a list file) to the UTF-8 that the program works with.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brindle {

// True when `bytes` are well-formed UTF-8 (RFC 3629: no overlong forms, no surrogates).
bool IsValidUtf8(std::string_view bytes);

// Of a byte that a character beyond ASCII may begin with: bit i stands for byte 0xC0 + i. 0 for the
// others.
constexpr std::uint64_t LeadBit(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return value < 0xC0 ? 0 : std::uint64_t{1} << (value - 0xC0U);
}

// Tells whether bytes that come piece by piece are well-formed UTF-8.
class Utf8Check {
 public:
  // False when what came so far cannot become valid any more.
  bool Accept(std::string_view bytes);
  // True when it does not end within a character.
  bool Complete() const { return state_ == 0; }
  // The LeadBit of each byte that a character began with.
  std::uint64_t Leads() const { return leads_; }

 private:
  std::uint64_t state_ = 0;
  std::uint64_t leads_ = 0;
};

// The length of the longest well-formed UTF-8 prefix of `bytes`.
size_t ValidUtf8Prefix(std::string_view bytes);

// Reads every byte as one Windows-1252 character. The five bytes that the code page leaves open
// become the control characters of the same number.
std::string Utf8FromWindows1252(std::string_view bytes);

// The same, written to `to`, where there is so much room; returns the end of what was written.
char* Utf8FromWindows1252(std::string_view bytes, char* to);
constexpr size_t RoomForWindows1252(size_t bytes) { return bytes * 3 + 1; }

enum class ByteOrder { kLittleEndian, kBigEndian };

// Reads `bytes` as UTF-16. A lone surrogate becomes U+FFFD; an odd last byte is dropped.
std::string Utf8FromUtf16(std::string_view bytes, ByteOrder order);

// The bytes of a text file, from UTF-16 when they begin with its byte-order mark, else as they are.
std::string Utf8FromMarked(std::string_view bytes);

// One received line: valid UTF-8 stays as it is, anything else is read as Windows-1252.
std::string DecodeReceived(std::string_view line);

}  // namespace brindle
