#include "mail/text_sweep.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstring>

#include "mail/byte_kernels.h"

namespace brindle {
namespace {

constexpr size_t kMasks = 256;  // looked at in one go: 16 KiB, which stay in the nearest cache

// The places of the two bytes of a wanted text that are looked for.
struct Probe {
  size_t a = 0;
  size_t b = 0;
};

// Chooses the two bytes that are rarest in a sample of the text.
Probe ChooseProbe(std::string_view text, std::string_view wanted) {
  constexpr size_t kPieces = 8;
  constexpr size_t kPieceSize = 512;
  std::array<unsigned, 256> counts{};
  const auto count = [&counts](char c) -> unsigned& {
    return counts[static_cast<unsigned char>(c)];
  };
  for (size_t piece = 0; piece < kPieces; ++piece) {
    const std::string_view sample = text.substr(text.size() / kPieces * piece, kPieceSize);
    for (char c : sample) ++count(c);
  }
  Probe probe;
  for (size_t i = 1; i < wanted.size(); ++i) {
    if (count(wanted[i]) < count(wanted[probe.a])) probe.a = i;
  }
  // Two places of the same byte tell less than two bytes.
  const auto cost = [&](size_t i) { return count(wanted[i]) + (wanted[i] == wanted[probe.a]); };
  probe.b = probe.a == 0 ? wanted.size() - 1 : 0;
  for (size_t i = 0; i < wanted.size(); ++i) {
    if (i != probe.a && cost(i) < cost(probe.b)) probe.b = i;
  }
  return probe;
}

// Compares a wanted text; eight bytes may be read at any place of the text (MailTexts::kSlack).
class Comparison {
 public:
  explicit Comparison(std::string_view wanted) : wanted_(wanted) {
    std::memcpy(&start_, wanted.data(), std::min(wanted.size(), sizeof start_));
    std::memset(&used_, 0xFF, std::min(wanted.size(), sizeof used_));
  }

  bool IsAt(const char* place) const {
    std::uint64_t here = 0;
    std::memcpy(&here, place, sizeof here);
    if ((here & used_) != start_) return false;
    return wanted_.size() <= sizeof here ||
           std::memcmp(place + sizeof here, wanted_.data() + sizeof here,
                       wanted_.size() - sizeof here) == 0;
  }

 private:
  std::string_view wanted_;
  std::uint64_t start_ = 0;
  std::uint64_t used_ = 0;
};

// The row that holds place `at`, which is not before the beginning of row `from`: among the next
// few rows without a branch, beyond them in steps that double.
template <typename End>
size_t RowAt(const End* ends, size_t rows, size_t from, size_t at) {
  constexpr size_t kNear = 8;
  if (from + kNear < rows) {
    size_t before = 0;
    for (size_t i = 0; i < kNear; ++i) before += ends[from + i] <= at ? 1U : 0U;
    if (before < kNear) return from + before;
    from += kNear;
  }
  if (ends[from] > at) return from;
  size_t step = 1;
  while (from + step < rows && ends[from + step] <= at) {
    from += step;
    step *= 2;
  }
  const End* last = ends + std::min(from + step, rows);
  return static_cast<size_t>(std::upper_bound(ends + from + 1, last, at) - ends);
}

template <typename End>
class Sweep {
 public:
  Sweep(std::string_view text, const End* ends, size_t rows, std::string_view wanted)
      : text_(text), ends_(ends), rows_(rows), wanted_(wanted), comparison_(wanted) {}

  std::vector<std::uint32_t> Run() {
    if (wanted_.size() > text_.size()) return {};
    const Probe probe = ChooseProbe(text_, wanted_);
    const ByteKernels& kernels = Kernels();
    const size_t places = text_.size() - wanted_.size() + 1;
    std::array<std::uint64_t, kMasks> mask;
    std::array<std::uint32_t, kMasks> withMarks;
    for (size_t at = 0; at < places; at += kMasks * kMaskBytes) {
      const size_t masks = std::min(kMasks, (places - at + kMaskBytes - 1) / kMaskBytes);
      const char* here = text_.data() + at;
      if (!kernels.pairs(here + probe.a, wanted_[probe.a], here + probe.b, wanted_[probe.b],
                         mask.data(), masks)) {
        continue;
      }
      // Where matches are common, a branch for each mask would be guessed wrong half of the time.
      size_t marked = 0;
      for (size_t m = 0; m < masks; ++m) {
        withMarks[marked] = static_cast<std::uint32_t>(m);
        marked += mask[m] != 0 ? 1U : 0U;
      }
      for (size_t i = 0; i < marked; ++i) {
        Look(at + withMarks[i] * kMaskBytes, mask[withMarks[i]]);
      }
    }
    return std::move(found_);
  }

 private:
  // Looks at the places that `candidates` marks from `base` on.
  void Look(size_t base, std::uint64_t candidates) {
    while (true) {
      // A row counts once: what is left of it is passed over.
      if (from_ > base) {
        if (from_ - base >= kMaskBytes) return;
        candidates &= ~std::uint64_t{0} << (from_ - base);
      }
      if (candidates == 0) return;
      const size_t place = base + static_cast<size_t>(std::countr_zero(candidates));
      if (place + wanted_.size() > text_.size()) return;
      candidates &= candidates - 1;
      if (!comparison_.IsAt(text_.data() + place)) continue;
      row_ = RowAt(ends_, rows_, row_, place);
      if (place + wanted_.size() > ends_[row_]) continue;
      found_.push_back(static_cast<std::uint32_t>(row_));
      from_ = static_cast<size_t>(ends_[row_]);
    }
  }

  std::string_view text_;
  const End* ends_;
  size_t rows_;
  std::string_view wanted_;
  Comparison comparison_;
  size_t row_ = 0;   // no later hit is before this row
  size_t from_ = 0;  // and none before this place
  std::vector<std::uint32_t> found_;
};

}  // namespace

std::vector<std::uint32_t> SweepTitles(const MailTexts& texts, std::string_view lowerText) {
  assert(!lowerText.empty());
  std::vector<std::uint32_t> found;
  texts.WithLowerEnds([&](const auto* ends) {
    found = Sweep(texts.LowerTitles(), ends, texts.Size(), lowerText).Run();
  });
  return found;
}

}  // namespace brindle
