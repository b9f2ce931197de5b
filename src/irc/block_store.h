#pragma once
// Short sequences (the texts of lines, the runs of lines) end to end in large blocks: no allocation
// and no header for each of a million of them. Only the last sequence can grow; the others never
// move, and go from the front, a whole block at a time.

#include <algorithm>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <utility>

namespace brindle {

template <typename T>
class BlockStore {
 public:
  // Ends the last sequence; what is appended from now on is a new one.
  void StartSequence() { begin_ = used_; }

  // Appends to the last sequence, which may move. Returns where it begins now.
  T* Append(const T* items, size_t count) {
    if (capacity_ - used_ < count) MoveToRoomFor(count);
    T* block = blocks_.empty() ? nullptr : blocks_.back().items.get();
    std::copy_n(items, count, block + used_);
    used_ += count;
    return block + begin_;
  }

  // Gives back the blocks that hold nothing from `first` on, which is where a sequence begins, or
  // null when only the last one is needed.
  void DropBefore(const T* first) {
    while (blocks_.size() > 1 && !blocks_.front().Holds(first)) blocks_.pop_front();
  }

 private:
  static constexpr size_t kBlockItems = 65536 / sizeof(T);

  struct Block {
    std::unique_ptr<T[]> items;
    size_t capacity;

    bool Holds(const T* item) const {
      const std::less<const T*> before;
      return !before(item, items.get()) && before(item, items.get() + capacity);
    }
  };

  void MoveToRoomFor(size_t count) {
    const size_t length = used_ - begin_;
    // A sequence that outgrows its block doubles it, so that it moves only rarely.
    const size_t capacity = std::max(kBlockItems, 2 * (length + count));
    auto block = std::make_unique_for_overwrite<T[]>(capacity);
    if (length > 0) std::copy_n(blocks_.back().items.get() + begin_, length, block.get());
    if (begin_ == 0 && !blocks_.empty()) {
      blocks_.back() = {std::move(block), capacity};
    } else {
      blocks_.push_back({std::move(block), capacity});
    }
    begin_ = 0;
    used_ = length;
    capacity_ = capacity;
  }

  std::deque<Block> blocks_;
  size_t begin_ = 0;  // of the last sequence, in the last block
  size_t used_ = 0;
  size_t capacity_ = 0;
};

}  // namespace brindle
