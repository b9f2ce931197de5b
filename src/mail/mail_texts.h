#pragma once
// The texts of a list of mails: numbers, titles and lower-cased titles, each kind end to end in one
// large buffer, so that a list of a million mails is a handful of blocks of memory and a search is
// one sweep over one of them. Lists may share the texts; once shared they do not change any more.
// Rows count from 0.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

#include "base/flat_array.h"

namespace brindle {

class MailTexts {
 public:
  // So many bytes may be read behind the lower-cased titles, and must be behind a padded text; they
  // mean nothing.
  static constexpr size_t kSlack = 64;

  // Adds one row. False when it was refused because one kind of text would pass 4 GiB.
  bool Append(std::string_view number, std::string_view title);

  // The same, but faster, for texts that are followed by kSlack bytes which may be read.
  bool AppendPadded(std::string_view number, std::string_view title) {
    if (number.size() > kShortNumber || title.size() > kMostText - titles_.Size() ||
        number.size() > kMostText - numbers_.Size()) {
      return Append(number, title);
    }
    numberEnds_.MakeRoom(1);
    titleEnds_.MakeRoom(1);
    numbers_.MakeRoom(kShortNumber);
    titles_.MakeRoom(title.size() + kStep);
    // Copied in pieces of a fixed size: what is too much is written over by the next row.
    std::memcpy(numbers_.Data() + numbers_.Size(), number.data(), kShortNumber);
    char* to = titles_.Data() + titles_.Size();
    for (size_t i = 0; i < title.size(); i += kStep) std::memcpy(to + i, title.data() + i, kStep);
    numbers_.Added(number.size());
    titles_.Added(title.size());
    numberEnds_.PushBack(static_cast<std::uint32_t>(numbers_.Size()));
    titleEnds_.PushBack(static_cast<std::uint32_t>(titles_.Size()));
    return true;
  }

  // Lower-cases the titles that were added since the last call. Best called while they are still in
  // the processor's cache. The functions about lower-cased titles know only these rows.
  void Settle();

  // Makes room for the rows of a list file of about `bytes`.
  void ReserveFor(size_t bytes);
  // Gives back memory that was reserved and not needed.
  void GiveBackMemory();

  size_t Size() const { return titleEnds_.Size(); }

  // The texts of a row; valid until the rows change. REQUIRES: row < Size().
  std::string_view Number(size_t row) const { return Piece(numbers_, numberEnds_.Data(), row); }
  std::string_view Title(size_t row) const { return Piece(titles_, titleEnds_.Data(), row); }
  std::string_view LowerTitle(size_t row) const {
    return HasOwnEnds() ? Piece(lower_, lowerEnds_.Data(), row)
                        : Piece(lower_, titleEnds_.Data(), row);
  }

  // All lower-cased titles without anything between them.
  std::string_view LowerTitles() const { return {lower_.Data(), lower_.Size()}; }

  // Calls use(ends), where ends[row] is the place in LowerTitles() at which that row ends.
  template <typename Use>
  void WithLowerEnds(Use use) const {
    HasOwnEnds() ? use(lowerEnds_.Data()) : use(titleEnds_.Data());
  }

 private:
  static constexpr size_t kMostText = std::numeric_limits<std::uint32_t>::max();
  static constexpr size_t kShortNumber = 16;
  static constexpr size_t kStep = 32;

  template <typename End>
  static std::string_view Piece(const FlatArray<char>& texts, const End* ends, size_t row) {
    const size_t begin = row == 0 ? 0 : static_cast<size_t>(ends[row - 1]);
    return {texts.Data() + begin, static_cast<size_t>(ends[row]) - begin};
  }

  // True when lower-casing has changed the length of a title.
  bool HasOwnEnds() const { return !lowerEnds_.Empty(); }
  void SettleRow(size_t row);

  FlatArray<char> numbers_;
  FlatArray<char> titles_;
  FlatArray<char> lower_;
  FlatArray<std::uint32_t> numberEnds_;
  FlatArray<std::uint32_t> titleEnds_;
  FlatArray<std::uint64_t> lowerEnds_;  // empty as long as they are the same as titleEnds_
  size_t settledRows_ = 0;
  size_t settledBytes_ = 0;  // of titles_
};

}  // namespace brindle
