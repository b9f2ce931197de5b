#include "mail/title_search.h"

#include <cassert>
#include <cstdint>
#include <cstring>
#include <string>

#include "base/text.h"

namespace brindle {
namespace {

constexpr std::uint64_t kLowBits = 0x0101010101010101U;
constexpr std::uint64_t kTopBits = 0x8080808080808080U;
constexpr unsigned char kCaseBit = 0x20;

// The only characters beyond ASCII whose lower case is ASCII: capital I with a dot (i) and the
// Kelvin sign (k).
constexpr std::string_view kDottedI = "\xC4\xB0";
constexpr std::string_view kKelvin = "\xE2\x84\xAA";

// One ASCII character in both cases, compared to many bytes at a time.
class CharacterProbe {
 public:
  explicit CharacterProbe(char lower)
      : fold_(lower >= 'a' && lower <= 'z' ? kCaseBit : 0),
        lower_(static_cast<unsigned char>(lower)) {}

  // 1 where the byte is the character, else 0: without a branch, so that the compiler can compare
  // many bytes at once.
  unsigned char Matches(char c) const {
    return static_cast<unsigned char>((static_cast<unsigned char>(c) | fold_) == lower_);
  }

  // A top bit for each of eight bytes that is the character. A byte after one that is may be wrong.
  std::uint64_t Candidates(const char* text) const {
    std::uint64_t word = 0;
    std::memcpy(&word, text, sizeof word);
    const std::uint64_t difference = (word | fold_ * kLowBits) ^ (lower_ * kLowBits);
    return (difference - kLowBits) & ~difference & kTopBits;
  }

 private:
  unsigned char fold_;
  unsigned char lower_;
};

// Finds a lower-case ASCII text in text of any case.
class AsciiFinder {
 public:
  AsciiFinder(std::string_view text, std::string_view wanted)
      : text_(text), wanted_(wanted), first_(wanted.front()), last_(wanted.back()) {}

  // The first place not before `from` where the wanted text is; npos when there is none.
  size_t Find(size_t from) const {
    const size_t reach = wanted_.size() - 1;
    size_t at = from;
    // Most places are passed over by the first and the last character alone, in large steps.
    for (; at + reach + kBlock <= text_.size(); at += kBlock) {
      if (!MayBeIn(text_.data() + at, reach)) continue;
      for (size_t word = at; word < at + kBlock; word += kWord) {
        const char* here = text_.data() + word;
        if ((first_.Candidates(here) & last_.Candidates(here + reach)) == 0) continue;
        for (size_t i = word; i < word + kWord; ++i) {
          if (IsAt(i)) return i;
        }
      }
    }
    for (; at + reach < text_.size(); ++at) {
      if (IsAt(at)) return at;
    }
    return std::string_view::npos;
  }

 private:
  static constexpr size_t kWord = sizeof(std::uint64_t);
  static constexpr size_t kBlock = 8 * kWord;

  // False when the wanted text starts at none of the kBlock places from `here` on.
  bool MayBeIn(const char* here, size_t reach) const {
    const CharacterProbe first = first_;
    const CharacterProbe last = last_;
    unsigned char any = 0;
    for (size_t i = 0; i < kBlock; ++i) {
      any = static_cast<unsigned char>(any |
                                       (first.Matches(here[i]) & last.Matches(here[i + reach])));
    }
    return any != 0;
  }

  bool IsAt(size_t at) const {
    for (size_t i = 0; i < wanted_.size(); ++i) {
      char c = text_[at + i];
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | kCaseBit);
      if (c != wanted_[i]) return false;
    }
    return true;
  }

  std::string_view text_;
  std::string_view wanted_;
  CharacterProbe first_;
  CharacterProbe last_;
};

// Searches all titles as one text. A place that reaches into the next title is none.
void AddAsciiMatches(const MailList& list, std::string_view wanted, RowSet& found) {
  const AsciiFinder finder(list.AllTitles(), wanted);
  size_t row = 0;
  for (size_t at = finder.Find(0); at != std::string_view::npos;) {
    while (list.TitleEnd(row) <= at) ++row;
    const size_t end = list.TitleEnd(row);
    const bool inside = at + wanted.size() <= end;
    if (inside) found.Set(row, true);
    at = finder.Find(inside ? end : at + 1);
  }
}

}  // namespace

RowSet RowsWithTitle(const MailList& list, std::string_view lowerText) {
  assert(!lowerText.empty());
  RowSet found(list.Size());
  const bool ascii = IsAscii(lowerText);
  if (ascii) AddAsciiMatches(list, lowerText, found);

  // Titles beyond ASCII one by one. The search above has seen their ASCII characters already.
  const RowSet& others = list.NonAsciiTitles();
  for (auto row = others.Next(0); row; row = others.Next(*row + 1)) {
    const std::string_view title = list.Title(*row);
    const bool hidden = title.find(kDottedI) != std::string_view::npos ||
                        title.find(kKelvin) != std::string_view::npos;
    if (ascii && !hidden) continue;
    if (LowerCase(title).find(lowerText) != std::string::npos) found.Set(*row, true);
  }
  return found;
}

}  // namespace brindle
