#pragma once
// A list of rows that tells one observer about each change: the truth behind a list box or the
// items of a combo box. Order is the order of adding; duplicates are allowed. A row of a type of
// its own says through an overload of RowText what is shown of it.

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace brindle {

struct ListChange {
  enum class What { kInsert, kRemove, kReplace, kClear };
  // Who hears that a row is about to go still finds it.
  enum class When { kBefore, kAfter };
  What what;
  When when;
  size_t index;  // of the row inserted, removed or replaced; 0 when cleared
};

// What all observed lists have in common. Observing changes nothing, so it is open to who may only
// read.
class Observed {
 public:
  using Observer = std::function<void(const ListChange&)>;

  Observed() = default;
  Observed(const Observed&) = delete;
  Observed& operator=(const Observed&) = delete;

  // Called before and after each change; the observer itself must not change the list. One observer
  // at a time; an empty function ends the observing.
  void Observe(Observer observer) const { observer_ = std::move(observer); }

 protected:
  ~Observed() = default;

  template <typename Change>
  void Tell(ListChange::What what, size_t index, Change change) {
    if (observer_) observer_({what, ListChange::When::kBefore, index});
    change();
    if (observer_) observer_({what, ListChange::When::kAfter, index});
  }

 private:
  mutable Observer observer_;
};

inline const std::string& RowText(const std::string& row) { return row; }

template <typename Row>
class ObservedList : public Observed {
 public:
  const std::vector<Row>& Items() const { return items_; }
  size_t Size() const { return items_.size(); }
  // REQUIRES: index < Size().
  const Row& operator[](size_t index) const { return items_[index]; }

  void Add(Row row) {
    Tell(ListChange::What::kInsert, Size(), [&] { items_.push_back(std::move(row)); });
  }

  // REQUIRES: index < Size().
  void Replace(size_t index, Row row) {
    Tell(ListChange::What::kReplace, index, [&] { items_[index] = std::move(row); });
  }

  // REQUIRES: index < Size().
  void RemoveAt(size_t index) {
    Tell(ListChange::What::kRemove, index,
         [&] { items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index)); });
  }

  void Clear() {
    Tell(ListChange::What::kClear, 0, [&] { items_.clear(); });
  }

 private:
  std::vector<Row> items_;
};

}  // namespace brindle
