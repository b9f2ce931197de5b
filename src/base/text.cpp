#include "base/text.h"

#include <utf8proc.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "base/utf8.h"

namespace brindle {
namespace {

constexpr std::string_view kLineEnds("\r\n\0", 3);

char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

char AsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

// `text` with every character put through `mapAscii` or `map`; bytes that are not valid stay.
std::string MapCharacters(std::string_view text, char (*mapAscii)(char),
                          utf8proc_int32_t (*map)(utf8proc_int32_t)) {
  std::string mapped(text);
  if (IsAscii(text)) {
    std::transform(mapped.begin(), mapped.end(), mapped.begin(), mapAscii);
    return mapped;
  }
  mapped.clear();
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  auto left = static_cast<utf8proc_ssize_t>(text.size());
  while (left > 0) {
    utf8proc_int32_t character = -1;
    const utf8proc_ssize_t length = utf8proc_iterate(bytes, left, &character);
    if (length <= 0) {
      mapped += static_cast<char>(*bytes);
      ++bytes;
      --left;
      continue;
    }
    utf8proc_uint8_t encoded[4];
    const utf8proc_ssize_t size = utf8proc_encode_char(map(character), encoded);
    mapped.append(reinterpret_cast<const char*>(encoded), static_cast<size_t>(size));
    bytes += length;
    left -= length;
  }
  return mapped;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::vector<std::string_view> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> pieces;
  size_t begin = 0;
  for (size_t end = text.find(separator); end != std::string_view::npos;
       end = text.find(separator, begin)) {
    pieces.push_back(text.substr(begin, end - begin));
    begin = end + separator.size();
  }
  pieces.push_back(text.substr(begin));
  return pieces;
}

std::string JoinFrom(const std::vector<std::string_view>& pieces, size_t from,
                     std::string_view separator) {
  std::string joined;
  for (size_t i = from; i < pieces.size(); ++i) {
    if (i > from) joined += separator;
    joined += pieces[i];
  }
  return joined;
}

std::string RemoveChars(std::string_view text, std::string_view unwanted) {
  std::string kept;
  kept.reserve(text.size());
  for (char c : text) {
    if (unwanted.find(c) == std::string_view::npos) kept += c;
  }
  return kept;
}

std::string RemoveBlanks(std::string_view text) { return RemoveChars(text, " "); }

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(' ') == std::string_view::npos;
}

std::string_view TrimBlanks(std::string_view text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return text.substr(0, 0);
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view FirstLine(std::string_view text) {
  return text.substr(0, text.find_first_of(kLineEnds));
}

std::string LowerCase(std::string_view text) {
  return MapCharacters(text, AsciiLower, utf8proc_tolower);
}

std::string UpperCase(std::string_view text) {
  return MapCharacters(text, AsciiUpper, utf8proc_toupper);
}

std::string MatchKey(std::string_view text) { return LowerCase(RemoveBlanks(text)); }

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  // The first characters tell, nearly always.
  const size_t both = std::min(a.size(), b.size());
  for (size_t i = 0; i < both; ++i) {
    if (a[i] == b[i]) continue;
    const bool ascii =
        ((static_cast<unsigned char>(a[i]) | static_cast<unsigned char>(b[i])) & 0x80U) == 0;
    if (!ascii) return LowerCase(a) == LowerCase(b);
    if (AsciiLower(a[i]) != AsciiLower(b[i])) return false;
  }
  return a.size() == b.size();
}

bool StartsIgnoringCase(std::string_view text, std::string_view lower) {
  // Many titles are asked and few fit: the first characters tell, nearly always.
  for (; !text.empty() && !lower.empty() && IsAscii(text.substr(0, 1)); text.remove_prefix(1)) {
    if (AsciiLower(text.front()) != lower.front()) return false;
    lower.remove_prefix(1);
  }
  return lower.empty() || LowerCase(text).starts_with(lower);
}

bool IsNumericText(std::string_view text) {
  text = TrimBlanks(text);
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) text.remove_prefix(1);
  const auto points = std::count(text.begin(), text.end(), '.');
  const auto digits = std::count_if(text.begin(), text.end(), IsDigit);
  return points <= 1 && digits >= 1 && points + digits == static_cast<long>(text.size());
}

bool IsAllDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

std::optional<long long> WholeNumber(std::string_view text, long long lowest, long long highest) {
  text = TrimBlanks(text);
  long long value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (value < lowest || value > highest) return std::nullopt;
  return value;
}

std::optional<std::int32_t> PortNumber(std::string_view text, std::int32_t lowest,
                                       std::int32_t highest) {
  if (!IsNumericText(text)) return std::nullopt;
  text = TrimBlanks(text);
  if (text.front() == '+') text.remove_prefix(1);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return std::nullopt;
  number = std::nearbyint(number);
  if (number < lowest || number > highest) return std::nullopt;
  return static_cast<std::int32_t>(number);
}

bool IsAscii(std::string_view text) {
  constexpr std::uint64_t kTopBits = 0x8080808080808080U;
  std::uint64_t seen = 0;
  size_t i = 0;
  for (; i + sizeof seen <= text.size(); i += sizeof seen) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + i, sizeof word);
    seen |= word;
  }
  for (; i < text.size(); ++i) seen |= static_cast<unsigned char>(text[i]);
  return (seen & kTopBits) == 0;
}

size_t CharacterCount(std::string_view text) {
  return text.size() - static_cast<size_t>(std::count_if(text.begin(), text.end(), IsTrailByte));
}

}  // namespace brindle
