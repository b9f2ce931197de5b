#pragma once
// Bytes in memory, handed out in small pieces; can be told to fail.

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>

#include "mail/list_reader.h"

namespace brindle {

class MemorySource : public BlockSource {
 public:
  explicit MemorySource(std::string_view bytes, size_t piece = std::numeric_limits<size_t>::max())
      : bytes_(bytes), piece_(piece) {}

  // Reading fails once so many bytes have been read.
  void FailAfter(size_t bytes) { failAfter_ = bytes; }

  size_t Read(char* into, size_t capacity) override {
    const size_t end = std::min(bytes_.size(), failAfter_);
    const size_t size = std::min({capacity, piece_, end - at_});
    bytes_.copy(into, size, at_);
    at_ += size;
    return size;
  }

  bool Failed() const override { return at_ == failAfter_; }
  void Rewind() override { at_ = 0; }
  size_t ExpectedSize() const override { return bytes_.size(); }

 private:
  std::string_view bytes_;
  size_t piece_;
  size_t at_ = 0;
  size_t failAfter_ = std::numeric_limits<size_t>::max();
};

}  // namespace brindle
