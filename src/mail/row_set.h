#pragma once
// A set of rows of a list, one bit a row, with its size kept and not counted. It holds the checks
// of the mail list and the answers of a search. Rows count from 0.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace brindle {

class RowSet {
 public:
  RowSet() = default;
  // Room for `rows` rows, none of them in the set.
  explicit RowSet(size_t rows) : words_((rows + kBits - 1) / kBits), rows_(rows) {}
  // The same, with `members` in it, each of them once. REQUIRES: they are below `rows`.
  RowSet(size_t rows, const std::vector<std::uint32_t>& members);

  // The number of rows there are, in the set or not.
  size_t Rows() const { return rows_; }
  // The number of rows in the set.
  size_t Count() const { return count_; }

  // REQUIRES: row < Rows().
  bool Contains(size_t row) const { return (words_[row / kBits] >> (row % kBits) & 1U) != 0; }

  // Adds one row to the end of the list.
  void PushBack(bool contained) {
    if (rows_ % kBits == 0) words_.push_back(0);
    if (contained) {
      words_.back() |= std::uint64_t{1} << (rows_ % kBits);
      ++count_;
    }
    ++rows_;
  }

  // Puts one row into the set or takes it out; false when that changed nothing.
  // REQUIRES: row < Rows().
  bool Set(size_t row, bool contained);

  // Puts the rows `first` to `last` inclusive into the set, or takes them out; false when that
  // changed nothing. REQUIRES: first <= last < Rows().
  bool AddRange(size_t first, size_t last);
  bool RemoveRange(size_t first, size_t last);

  // Puts all rows of `other` into the set; false when that changed nothing.
  // REQUIRES: other.Rows() == Rows().
  bool AddAll(const RowSet& other);

  // Takes all rows out of the set; false when that changed nothing.
  bool RemoveAll();

  // The first row of the set that is not before `from`; nothing when there is none. Runs of rows
  // outside the set cost one step for 64 rows.
  std::optional<size_t> Next(size_t from) const;

 private:
  static constexpr size_t kBits = 64;

  // Adds the rows of `bits` to one word, or removes them, and keeps the count.
  void AddBits(size_t word, std::uint64_t bits);
  void RemoveBits(size_t word, std::uint64_t bits);
  // Calls change(word, bits) for each word that has rows from `first` to `last`.
  template <typename Change>
  static void ForWords(size_t first, size_t last, Change change);

  std::vector<std::uint64_t> words_;  // bits at and beyond rows_ are 0
  size_t rows_ = 0;
  size_t count_ = 0;
};

}  // namespace brindle
