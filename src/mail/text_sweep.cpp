#include "mail/text_sweep.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstring>
#include <iterator>
#include <string>

#include "base/encoding.h"
#include "base/letter_case.h"
#include "base/text.h"
#include "base/utf8.h"
#include "mail/byte_kernels.h"

namespace brindle {
namespace {

constexpr size_t kMasks = 64;  // looked at in one go: 4 KiB, which stay in the nearest cache

// Pieces from all over the text tell what is common in it.
constexpr size_t kPieces = 8;

std::string_view Piece(std::string_view text, size_t piece) {
  constexpr size_t kSize = 512;
  return text.substr(text.size() / kPieces * piece, kSize);
}

// What is looked for, lower-cased, and the other case of each of its characters.
struct Wanted {
  explicit Wanted(std::string_view text) : lower(text), upper(UpperTwin(text)) {}
  size_t Size() const { return lower.size(); }
  EitherByte At(size_t i) const { return {lower[i], upper[i]}; }

  std::string_view lower;
  std::string upper;
};

// The places of the two bytes of a wanted text that are looked for.
struct Probe {
  size_t a = 0;
  size_t b = 0;
};

// Chooses the two bytes that are rarest in a sample of the text.
Probe ChooseProbe(std::string_view text, const Wanted& wanted) {
  std::array<unsigned, 256> counts{};
  const auto count = [&counts](char c) -> unsigned& {
    return counts[static_cast<unsigned char>(c)];
  };
  for (size_t piece = 0; piece < kPieces; ++piece) {
    for (char c : Piece(text, piece)) ++count(c);
  }
  const auto cost = [&](size_t i) {
    const auto [lower, upper] = wanted.At(i);
    return count(lower) + (lower == upper ? 0 : count(upper));
  };
  Probe probe;
  for (size_t i = 1; i < wanted.Size(); ++i) {
    if (cost(i) < cost(probe.a)) probe.a = i;
  }
  // Two places of the same byte tell less than two bytes.
  const auto costBeside = [&](size_t i) {
    return cost(i) + (wanted.lower[i] == wanted.lower[probe.a] ? 1 : 0);
  };
  probe.b = probe.a == 0 ? wanted.Size() - 1 : 0;
  for (size_t i = 0; i < wanted.Size(); ++i) {
    if (i != probe.a && costBeside(i) < costBeside(probe.b)) probe.b = i;
  }
  return probe;
}

// Compares a wanted text; eight bytes may be read at any place of the text (MailTexts::kSlack).
class Comparison {
 public:
  explicit Comparison(const Wanted& wanted) : wanted_(wanted) {
    const size_t size = std::min(wanted.Size(), sizeof start_);
    std::uint64_t upper = 0;
    std::memcpy(&start_, wanted.lower.data(), size);
    std::memcpy(&upper, wanted.upper.data(), size);
    std::memset(&looked_, 0xFF, size);
    looked_ &= ~(start_ ^ upper);
    start_ &= looked_;
    // The cases of an ASCII letter differ in one bit, so that nothing else looks like it.
    looksAtAll_ = wanted.Size() <= sizeof start_ && IsAscii(wanted.lower);
  }

  bool IsAt(const char* place) const {
    std::uint64_t here = 0;
    std::memcpy(&here, place, sizeof here);
    return (here & looked_) == start_ && (looksAtAll_ || EachIsAt(place));
  }

 private:
  // Looks at whole characters: half of one case and half of the other would be another character.
  bool EachIsAt(const char* place) const {
    for (size_t i = 0; i < wanted_.Size();) {
      size_t end = i + 1;
      while (end < wanted_.Size() && IsTrailByte(wanted_.lower[end])) ++end;
      if (std::memcmp(place + i, wanted_.lower.data() + i, end - i) != 0 &&
          std::memcmp(place + i, wanted_.upper.data() + i, end - i) != 0) {
        return false;
      }
      i = end;
    }
    return true;
  }

  const Wanted& wanted_;
  std::uint64_t start_ = 0;   // of the wanted text, without the bits in which the cases differ
  std::uint64_t looked_ = 0;  // the other bits
  bool looksAtAll_ = false;   // nothing else remains to be compared
};

class Sweep {
 public:
  Sweep(const MailTexts& texts, TextRowSpan rows, std::string_view lowerText, SearchIn where)
      : rows_(rows),
        begins_(texts.Begins()),
        text_(texts.Text().substr(
            0, rows.end < texts.Size() ? begins_[rows.end] : texts.Text().size())),
        wanted_(lowerText),
        comparison_(wanted_),
        where_(where),
        mayBeNumber_(kNumberBytes.find(lowerText[0]) != std::string_view::npos) {}

  std::vector<std::uint32_t> Run() {
    // An LF is in no row.
    const std::string_view text = text_.substr(begins_[rows_.first]);
    if (wanted_.Size() > text.size() || wanted_.lower.find('\n') != std::string_view::npos) {
      return {};
    }
    probe_ = ChooseProbe(text, wanted_);
    IsInMostRows(text) ? LookAtEachRow() : LookAtEverything();
    return std::move(found_);
  }

 private:
  // With these a text may begin that is found in front of a title.
  static constexpr std::string_view kNumberBytes = "0123456789 +-.)([]\t";

  // As far as the sample tells. Every row has a tab.
  bool IsInMostRows(std::string_view text) const {
    size_t rows = 0;
    size_t hits = 0;
    for (size_t piece = 0; piece < kPieces; ++piece) {
      const std::string_view sample = Piece(text, piece);
      for (size_t i = 0; i + wanted_.Size() <= sample.size(); ++i) {
        rows += sample[i] == '\t' ? 1U : 0U;
        hits += comparison_.IsAt(sample.data() + i) ? 1U : 0U;
      }
    }
    return hits > rows;
  }

  // Marks the places from `at` on at which the probe finds something; false when there are none.
  bool Mark(size_t at, std::uint64_t* mask, size_t masks) const {
    const char* here = text_.data() + at;
    return kernels_.pairs(here + probe_.a, wanted_.At(probe_.a), here + probe_.b,
                          wanted_.At(probe_.b), mask, masks);
  }

  // What is in most rows is found soon after the beginning of each.
  void LookAtEachRow() {
    found_.reserve(rows_.end - rows_.first);
    for (row_ = rows_.first; row_ < rows_.end; ++row_) {
      const size_t end = row_ + 1 < rows_.end ? begins_[row_ + 1] : text_.size();
      bool found = false;
      for (size_t at = begins_[row_]; at + wanted_.Size() <= end && !found; at += kMaskBytes) {
        for (std::uint64_t mask = MarksFrom(at); mask != 0 && !found; mask &= mask - 1) {
          const size_t place = at + static_cast<size_t>(std::countr_zero(mask));
          if (place + wanted_.Size() > end) break;
          found = comparison_.IsAt(text_.data() + place) && Counts(place);
        }
      }
      if (found) found_.push_back(static_cast<std::uint32_t>(row_));
    }
  }

  // The marks of the 64 places from `at` on, which is never before the last one. Many are made at
  // once.
  std::uint64_t MarksFrom(size_t at) {
    if (at + kMaskBytes > marksEnd_) {
      const size_t places = text_.size() - wanted_.Size() + 1;
      marks_.fill(0);
      Mark(at, marks_.data(), std::min(kMasks, (places - at + kMaskBytes - 1) / kMaskBytes));
      marksEnd_ = at + kMasks * kMaskBytes;
    }
    const size_t place = kMasks * kMaskBytes - (marksEnd_ - at);
    const size_t shift = place % kMaskBytes;
    const std::uint64_t* marks = marks_.data() + place / kMaskBytes;
    return marks[0] >> shift | marks[1] << 1U << (kMaskBytes - 1 - shift);
  }

  void LookAtEverything() {
    const size_t places = text_.size() - wanted_.Size() + 1;
    row_ = rows_.first;
    std::array<std::uint64_t, kMasks> mask;
    std::array<std::uint32_t, kMasks> withMarks;
    std::array<std::uint32_t, kMasks * kMaskBytes> hits;
    for (size_t at = begins_[rows_.first]; at < places; at += kMasks * kMaskBytes) {
      const size_t masks = std::min(kMasks, (places - at + kMaskBytes - 1) / kMaskBytes);
      if (!Mark(at, mask.data(), masks)) continue;
      // Where matches are common, a branch for each mask or each hit would be guessed wrong half of
      // the time.
      size_t marked = 0;
      for (size_t m = 0; m < masks; ++m) {
        withMarks[marked] = static_cast<std::uint32_t>(m);
        marked += mask[m] != 0 ? 1U : 0U;
      }
      size_t count = 0;
      for (size_t i = 0; i < marked; ++i) {
        for (std::uint64_t bits = mask[withMarks[i]]; bits != 0; bits &= bits - 1) {
          const size_t place =
              withMarks[i] * kMaskBytes + static_cast<size_t>(std::countr_zero(bits));
          hits[count] = static_cast<std::uint32_t>(place);
          count += comparison_.IsAt(text_.data() + at + place) ? 1U : 0U;
        }
      }
      for (size_t i = 0; i < count; ++i) Add(at + hits[i]);
    }
  }

  // Adds the row of a hit, once.
  void Add(size_t place) {
    if (place + wanted_.Size() > text_.size()) return;
    row_ = RowAt(row_, place);
    if (!found_.empty() && found_.back() == row_) return;
    if (Counts(place)) found_.push_back(static_cast<std::uint32_t>(row_));
  }

  // The row that holds place `at`, which is not before the beginning of row `from`: among the next
  // few rows without a branch, beyond them in steps that double.
  size_t RowAt(size_t from, size_t at) const {
    constexpr size_t kNear = 8;
    const size_t rows = rows_.end;
    if (from + kNear < rows) {
      size_t before = 0;
      for (size_t i = 1; i <= kNear; ++i) before += begins_[from + i] <= at ? 1U : 0U;
      from += before;
      if (before < kNear) return from;
    }
    size_t step = 1;
    while (from + step < rows && begins_[from + step] <= at) {
      from += step;
      step *= 2;
    }
    const std::uint32_t* last = begins_ + std::min(from + step, rows);
    return static_cast<size_t>(std::upper_bound(begins_ + from + 1, last, at) - begins_) - 1;
  }

  // True when a text found at `place`, in the row row_, is where it is looked for.
  bool Counts(size_t place) const {
    if (!mayBeNumber_) return true;
    if (where_ == SearchIn::kTitlesAndNumbers && place == begins_[row_]) return true;
    const size_t begin = begins_[row_];
    return std::memchr(text_.data() + begin, '\t', place - begin) != nullptr;
  }

  TextRowSpan rows_;
  const std::uint32_t* begins_;
  std::string_view text_;  // up to the end of these rows
  Wanted wanted_;
  Comparison comparison_;
  SearchIn where_;
  bool mayBeNumber_;
  const ByteKernels& kernels_ = Kernels();
  Probe probe_;
  std::array<std::uint64_t, kMasks + 1> marks_;  // for MarksFrom; the last one stays 0
  size_t marksEnd_ = 0;
  size_t row_ = 0;  // no later hit is before this row
  std::vector<std::uint32_t> found_;
};

}  // namespace

std::vector<std::uint32_t> SweepTexts(const MailTexts& texts, TextRowSpan rows,
                                      std::string_view lowerText, SearchIn where) {
  assert(!lowerText.empty() && IsValidUtf8(lowerText) && rows.first < rows.end);
  std::vector<std::uint32_t> found = Sweep(texts, rows, lowerText, where).Run();
  if (texts.OddTitles().empty()) return found;
  std::vector<std::uint32_t> odd;
  for (const auto& [row, lower] : texts.OddTitles()) {
    const bool isAmongThese = row >= rows.first && row < rows.end;
    if (isAmongThese && lower.find(lowerText) != std::string::npos) odd.push_back(row);
  }
  std::vector<std::uint32_t> both;
  std::set_union(found.begin(), found.end(), odd.begin(), odd.end(), std::back_inserter(both));
  return both;
}

}  // namespace brindle
