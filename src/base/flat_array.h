#pragma once
// A growing array of plain values for very large amounts. It differs from std::vector in what
// growing costs: it takes bulk memory, and new values are not set to anything.

#include <cassert>
#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>

#include "base/bulk_memory.h"

namespace brindle {

template <typename Value>
class FlatArray {
  static_assert(std::is_trivially_copyable_v<Value>);

 public:
  FlatArray() = default;
  ~FlatArray() { FreeMemory(values_, capacity_ * sizeof(Value)); }
  FlatArray(const FlatArray& other) { Append(other.values_, other.size_); }
  FlatArray(FlatArray&& other) noexcept { Swap(other); }
  FlatArray& operator=(FlatArray other) noexcept {
    Swap(other);
    return *this;
  }

  size_t Size() const { return size_; }
  size_t Capacity() const { return capacity_; }
  bool Empty() const { return size_ == 0; }
  const Value* Data() const { return values_; }
  Value* Data() { return values_; }
  Value operator[](size_t index) const {
    assert(index < size_);
    return values_[index];
  }
  Value Back() const { return (*this)[size_ - 1]; }

  // Makes room for `capacity` values in all. What is never written costs no memory.
  void Reserve(size_t capacity) {
    if (capacity > capacity_) SetCapacity(capacity);
  }

  // Makes room for `more` values behind the last one; doubles, so that many calls cost little.
  void MakeRoom(size_t more) {
    if (capacity_ - size_ >= more) return;
    const size_t needed = size_ + more;
    SetCapacity(needed > 2 * capacity_ ? needed : 2 * capacity_);
  }

  void PushBack(Value value) {
    MakeRoom(1);
    values_[size_++] = value;
  }

  // `values` must not point into this array.
  void Append(const Value* values, size_t count) {
    if (count == 0) return;
    MakeRoom(count);
    std::memcpy(values_ + size_, values, count * sizeof(Value));
    size_ += count;
  }

  // Says that `count` values have been written behind the last one. REQUIRES: there is room.
  void Added(size_t count) {
    assert(count <= capacity_ - size_);
    size_ += count;
  }

  // REQUIRES: size <= Size().
  void Shrink(size_t size) { size_ = size; }

 private:
  void SetCapacity(size_t capacity) {
    values_ = static_cast<Value*>(ResizeMemory(values_, capacity_ * sizeof(Value),
                                               size_ * sizeof(Value), capacity * sizeof(Value)));
    capacity_ = capacity;
  }

  void Swap(FlatArray& other) {
    std::swap(values_, other.values_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
  }

  Value* values_ = nullptr;
  size_t size_ = 0;
  size_t capacity_ = 0;
};

}  // namespace brindle
