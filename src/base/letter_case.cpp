#include "base/letter_case.h"

#include <utf8proc.h>

#include <bitset>
#include <cstdint>

#include "base/encoding.h"

namespace brindle {
namespace {

constexpr utf8proc_int32_t kCharacters = 0x20000;  // none beyond these has a case

struct Encoded {
  explicit Encoded(utf8proc_int32_t c)
      : size(static_cast<size_t>(
            utf8proc_encode_char(c, reinterpret_cast<utf8proc_uint8_t*>(bytes)))) {}
  std::string_view View() const { return {bytes, size}; }

  char bytes[4];
  size_t size;
};

// The first character of `text`, -1 when it is not valid, and its length.
utf8proc_int32_t Decode(std::string_view text, size_t& length) {
  utf8proc_int32_t c = -1;
  const auto read = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                     static_cast<utf8proc_ssize_t>(text.size()), &c);
  length = read > 0 ? static_cast<size_t>(read) : 1;
  return c;
}

// The upper case of `lower` if it leads back there and is as long, else `lower`.
utf8proc_int32_t TwinOf(utf8proc_int32_t lower) {
  const utf8proc_int32_t upper = utf8proc_toupper(lower);
  const bool leadsBack = utf8proc_tolower(upper) == lower;
  return leadsBack && Encoded(upper).size == Encoded(lower).size ? upper : lower;
}

struct OddCharacters {
  OddCharacters() {
    for (utf8proc_int32_t c = 0; c < kCharacters; ++c) {
      const utf8proc_int32_t lower = utf8proc_tolower(c);
      if (lower == c || TwinOf(lower) == c) continue;
      odd.set(static_cast<size_t>(c));
      leads |= LeadBit(Encoded(c).bytes[0]);
    }
  }

  std::bitset<kCharacters> odd;
  std::uint64_t leads = 0;
};

const OddCharacters& Odd() {
  static const OddCharacters kOdd;
  return kOdd;
}

}  // namespace

std::string UpperTwin(std::string_view lower) {
  std::string twin;
  for (size_t length = 0; !lower.empty(); lower.remove_prefix(length)) {
    twin += Encoded(TwinOf(Decode(lower, length))).View();
  }
  return twin;
}

bool MayHoldOdd(std::uint64_t leads) { return leads != 0 && (leads & Odd().leads) != 0; }

size_t FindOdd(std::string_view text, size_t from) {
  const OddCharacters& odd = Odd();
  for (size_t i = from; i < text.size(); ++i) {
    if ((LeadBit(text[i]) & odd.leads) == 0) continue;
    size_t length = 0;
    const utf8proc_int32_t c = Decode(text.substr(i), length);
    if (c >= 0 && c < kCharacters && odd.odd[static_cast<size_t>(c)]) return i;
  }
  return std::string_view::npos;
}

}  // namespace brindle
