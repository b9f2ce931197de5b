#pragma once
// Cuts a stream of text blocks into lines. A line ends at LF, CR or CR LF; a line that is not
// complete waits for the next block.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "mail/byte_kernels.h"

namespace brindle {

class LineCutter {
 public:
  // What is beyond `longestLine` bytes of one line is dropped, to the byte.
  explicit LineCutter(size_t longestLine) : longestLine_(longestLine) {}

  // Room for `size` more bytes behind the waiting ones; valid until the next call of any function.
  char* Room(size_t size) {
    const size_t needed = used_ + size + kMaskBytes;
    if (buffer_.size() < needed) buffer_.resize(std::max(needed, 2 * buffer_.size()));
    return buffer_.data() + used_;
  }
  // Says that `size` bytes have been written into that room.
  void Added(size_t size) { used_ += size; }

  // Calls take(line) for every complete line, without its end. The line is gone when take returns;
  // until then kMaskBytes bytes behind it may be read.
  template <typename Take>
  void Cut(Take take);

  // Hands over the last line if it has no end of its own.
  template <typename Take>
  void Finish(Take take) {
    Cut(take);
    if (used_ > 0 && !dropping_) take(std::string_view(buffer_.data(), used_));
    used_ = 0;
  }

 private:
  static constexpr size_t kMasks = 256;

  // Hands over the lines that end at the marked places; `base` is the place of the first mark.
  template <typename Take>
  void CutAt(size_t base, std::uint64_t ends, Take& take);

  size_t longestLine_;
  std::vector<char> buffer_;  // kMaskBytes longer than what is used
  size_t used_ = 0;
  size_t begin_ = 0;       // of the line that is being looked for, within Cut
  size_t searched_ = 0;    // no line ends before this place
  bool afterCr_ = false;   // a CR ended the last line: an LF that follows belongs to it
  bool dropping_ = false;  // the rest of an overlong line is being dropped
};

template <typename Take>
void LineCutter::Cut(Take take) {
  if (used_ == 0) return;
  begin_ = 0;
  if (afterCr_) {
    if (buffer_[0] == '\n') begin_ = searched_ = 1;
    afterCr_ = false;
  }
  std::uint64_t ends[kMasks];
  for (size_t at = searched_; at < used_; at += kMasks * kMaskBytes) {
    const size_t masks = std::min(kMasks, (used_ - at + kMaskBytes - 1) / kMaskBytes);
    Kernels().lineEnds(buffer_.data() + at, ends, masks);
    for (size_t m = 0; m < masks; ++m) CutAt(at + m * kMaskBytes, ends[m], take);
  }
  used_ -= begin_;
  std::memmove(buffer_.data(), buffer_.data() + begin_, used_);
  searched_ = used_;
  if (used_ > longestLine_) {
    if (!dropping_) take(std::string_view(buffer_.data(), longestLine_));
    dropping_ = true;
  }
  if (dropping_) used_ = searched_ = 0;
}

template <typename Take>
void LineCutter::CutAt(size_t base, std::uint64_t ends, Take& take) {
  for (; ends != 0; ends &= ends - 1) {
    const size_t end = base + static_cast<size_t>(std::countr_zero(ends));
    if (end < begin_) continue;  // the LF of a CR LF
    if (end >= used_) return;    // left over from an earlier block
    if (!dropping_) take(std::string_view(buffer_.data() + begin_, end - begin_));
    dropping_ = false;
    begin_ = end + 1;
    if (buffer_[end] != '\r') continue;
    if (begin_ == used_) {
      afterCr_ = true;
    } else if (buffer_[begin_] == '\n') {
      ++begin_;
    }
  }
}

}  // namespace brindle
