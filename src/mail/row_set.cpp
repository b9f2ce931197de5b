#include "mail/row_set.h"

#include <algorithm>
#include <bit>
#include <cassert>

namespace brindle {

RowSet::RowSet(size_t rows, const std::vector<std::uint32_t>& members) : RowSet(rows) {
  for (const std::uint32_t row : members) {
    assert(row < rows_);
    words_[row / kBits] |= std::uint64_t{1} << (row % kBits);
  }
  count_ = members.size();
}

bool RowSet::Set(size_t row, bool contained) {
  assert(row < rows_);
  if (Contains(row) == contained) return false;
  words_[row / kBits] ^= std::uint64_t{1} << (row % kBits);
  contained ? ++count_ : --count_;
  return true;
}

void RowSet::AddBits(size_t word, std::uint64_t bits) {
  count_ += static_cast<size_t>(std::popcount(bits & ~words_[word]));
  words_[word] |= bits;
}

void RowSet::RemoveBits(size_t word, std::uint64_t bits) {
  count_ -= static_cast<size_t>(std::popcount(bits & words_[word]));
  words_[word] &= ~bits;
}

template <typename Change>
void RowSet::ForWords(size_t first, size_t last, Change change) {
  const std::uint64_t fromFirst = ~std::uint64_t{0} << (first % kBits);
  const std::uint64_t toLast = ~std::uint64_t{0} >> (kBits - 1 - last % kBits);
  const size_t lastWord = last / kBits;
  size_t word = first / kBits;
  if (word == lastWord) return change(word, fromFirst & toLast);
  change(word, fromFirst);
  for (++word; word < lastWord; ++word) change(word, ~std::uint64_t{0});
  change(lastWord, toLast);
}

bool RowSet::AddRange(size_t first, size_t last) {
  assert(first <= last && last < rows_);
  const size_t before = count_;
  ForWords(first, last, [this](size_t word, std::uint64_t bits) { AddBits(word, bits); });
  return count_ != before;
}

bool RowSet::RemoveRange(size_t first, size_t last) {
  assert(first <= last && last < rows_);
  const size_t before = count_;
  ForWords(first, last, [this](size_t word, std::uint64_t bits) { RemoveBits(word, bits); });
  return count_ != before;
}

bool RowSet::AddAll(const RowSet& other) {
  assert(other.rows_ == rows_);
  const size_t before = count_;
  for (size_t word = 0; word < words_.size(); ++word) AddBits(word, other.words_[word]);
  return count_ != before;
}

bool RowSet::RemoveAll() {
  if (count_ == 0) return false;
  std::fill(words_.begin(), words_.end(), 0);
  count_ = 0;
  return true;
}

std::optional<size_t> RowSet::Next(size_t from) const {
  if (from >= rows_) return std::nullopt;
  size_t word = from / kBits;
  std::uint64_t bits = words_[word] & (~std::uint64_t{0} << (from % kBits));
  while (bits == 0) {
    if (++word == words_.size()) return std::nullopt;
    bits = words_[word];
  }
  return word * kBits + static_cast<size_t>(std::countr_zero(bits));
}

}  // namespace brindle
