#pragma once
// Cuts a stream of text blocks into lines. A line ends at LF, CR or CR LF; a line that is not
// complete waits for the next block.

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

namespace brindle {

class LineCutter {
 public:
  // What is beyond `longestLine` bytes of one line is dropped, to the byte.
  explicit LineCutter(size_t longestLine) : longestLine_(longestLine) {}

  // Room for `size` more bytes behind the waiting ones; valid until the next call of any function.
  char* Room(size_t size) {
    if (buffer_.size() - used_ < size) buffer_.resize(std::max(used_ + size, 2 * buffer_.size()));
    return buffer_.data() + used_;
  }
  // Says that `size` bytes have been written into that room.
  void Added(size_t size) { used_ += size; }

  // Calls take(line) for every complete line, without its end. The line is gone when take returns.
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
  // The first `wanted` not before `from`; used_ when there is none.
  size_t Find(char wanted, size_t from) const {
    const void* found = std::memchr(buffer_.data() + from, wanted, used_ - from);
    return found == nullptr ? used_
                            : static_cast<size_t>(static_cast<const char*>(found) - buffer_.data());
  }

  size_t longestLine_;
  std::vector<char> buffer_;
  size_t used_ = 0;
  size_t searched_ = 0;    // no line ends before this place
  bool afterCr_ = false;   // a CR ended the last line: an LF that follows belongs to it
  bool dropping_ = false;  // the rest of an overlong line is being dropped
};

template <typename Take>
void LineCutter::Cut(Take take) {
  if (used_ == 0) return;
  size_t begin = 0;
  if (afterCr_) {
    if (buffer_[0] == '\n') begin = searched_ = 1;
    afterCr_ = false;
  }
  // The next LF and the next CR are looked for apart, so that a file that never uses one of them is
  // not searched for it again and again.
  size_t lf = Find('\n', searched_);
  size_t cr = Find('\r', searched_);
  for (size_t end = std::min(lf, cr); end != used_; end = std::min(lf, cr)) {
    if (!dropping_) take(std::string_view(buffer_.data() + begin, end - begin));
    dropping_ = false;
    begin = end + 1;
    if (end == cr) {
      if (begin == used_) {
        afterCr_ = true;
      } else if (begin == lf) {
        ++begin;
      }
      cr = Find('\r', begin);
    }
    if (lf < begin) lf = Find('\n', begin);
  }
  used_ -= begin;
  std::memmove(buffer_.data(), buffer_.data() + begin, used_);
  searched_ = used_;
  if (used_ > longestLine_) {
    if (!dropping_) take(std::string_view(buffer_.data(), longestLine_));
    dropping_ = true;
  }
  if (dropping_) used_ = searched_ = 0;
}

}  // namespace brindle
