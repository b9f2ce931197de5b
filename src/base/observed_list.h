#pragma once
// A list of texts that tells one observer about each change: the truth behind a list box or the
// items of a combo box. Order is the order of adding; duplicates are allowed.

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace brindle {

struct ListChange {
  enum class What { kInserted, kRemoved, kCleared };
  What what;
  size_t index;  // of the row inserted or removed; 0 when cleared
};

class ObservedList {
 public:
  // Called after each change. One observer at a time; an empty function ends the observing.
  void Observe(std::function<void(const ListChange&)> observer) { observer_ = std::move(observer); }

  const std::vector<std::string>& Items() const { return items_; }
  size_t Size() const { return items_.size(); }

  void Add(std::string item) {
    items_.push_back(std::move(item));
    Tell({ListChange::What::kInserted, items_.size() - 1});
  }

  // REQUIRES: index < Size().
  void RemoveAt(size_t index) {
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
    Tell({ListChange::What::kRemoved, index});
  }

  void Clear() {
    items_.clear();
    Tell({ListChange::What::kCleared, 0});
  }

 private:
  void Tell(const ListChange& change) {
    if (observer_) observer_(change);
  }

  std::vector<std::string> items_;
  std::function<void(const ListChange&)> observer_;
};

}  // namespace brindle
