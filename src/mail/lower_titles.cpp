#include "mail/lower_titles.h"

#include <array>
#include <cstdint>
#include <string>

#include "base/text.h"
#include "base/utf8.h"
#include "mail/byte_kernels.h"

namespace brindle {
namespace {

constexpr unsigned kFirstLead = 0xC2;  // of a character of two bytes
constexpr unsigned kLastLead = 0xDF;
constexpr size_t kTrails = 0x40;

unsigned Byte(char c) { return static_cast<unsigned char>(c); }

// The lower case of every character of two bytes; it has one to three bytes.
struct Lowered {
  char bytes[3];
  std::uint8_t size;
};
using PairTable = std::array<Lowered, (kLastLead - kFirstLead + 1) * kTrails>;

PairTable MakePairTable() {
  PairTable table{};
  for (size_t i = 0; i < table.size(); ++i) {
    const char character[] = {static_cast<char>(kFirstLead + i / kTrails),
                              static_cast<char>(0x80U + i % kTrails)};
    const std::string lower = LowerCase({character, sizeof character});
    lower.copy(table[i].bytes, sizeof table[i].bytes);
    table[i].size = static_cast<std::uint8_t>(lower.size());
  }
  return table;
}

// The length of the text from `from` on that holds no ASCII and no character of two bytes.
size_t LongCharacters(std::string_view title, size_t from) {
  size_t end = from + 1;
  while (end < title.size() && Byte(title[end]) >= 0x80 &&
         !(Byte(title[end]) >= kFirstLead && Byte(title[end]) <= kLastLead)) {
    ++end;
  }
  return end - from;
}

}  // namespace

void AppendLowerCase(std::string_view title, FlatArray<char>& lower) {
  lower.MakeRoom(title.size());
  if (Kernels().lowerAscii(title.data(), lower.Data() + lower.Size(), title.size())) {
    lower.Added(title.size());
    return;
  }
  static const PairTable kPairs = MakePairTable();
  for (size_t i = 0; i < title.size();) {
    const unsigned byte = Byte(title[i]);
    if (byte < 0x80) {
      lower.PushBack(static_cast<char>(byte - 'A' < 26 ? byte | 0x20U : byte));
      ++i;
    } else if (byte >= kFirstLead && byte <= kLastLead && i + 1 < title.size() &&
               IsTrailByte(title[i + 1])) {
      const Lowered& pair =
          kPairs[(byte - kFirstLead) * kTrails + (Byte(title[i + 1]) & (kTrails - 1))];
      lower.Append(pair.bytes, pair.size);
      i += 2;
    } else {
      const size_t length = LongCharacters(title, i);
      const std::string mapped = LowerCase(title.substr(i, length));
      lower.Append(mapped.data(), mapped.size());
      i += length;
    }
  }
}

}  // namespace brindle
