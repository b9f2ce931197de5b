#pragma once
// The rows of the who's-here list, made for rooms of many thousands: a row is found by its nick,
// removed, and reached by its number without a walk over the others.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/observed_list.h"

namespace brindle {

class NickList : public Observed {
 public:
  size_t Size() const { return size_; }
  // REQUIRES: index < Size().
  const std::string& operator[](size_t index) const;
  // All rows, copied.
  std::vector<std::string> Items() const;

  void Add(std::string_view nick);

  // Removes the first row that equals `nick`, ignoring case, either whole or without its first
  // character. False when there is none. REQUIRES: `nick` is not empty.
  bool Remove(std::string_view nick);
  // Something about that row is told anew: `change` is called where there is one.
  void Renew(std::string_view nick, const std::function<void()>& change);

  // True for a nick that Remove would find.
  bool Contains(std::string_view nick) const { return FirstBy(nick).has_value(); }

  void Clear();

 private:
  using Arrival = std::uint64_t;  // counts the rows added; rows stand in that order
  struct Row {
    Arrival arrival;
    std::string nick;
  };
  using Block = std::vector<Row>;
  struct Place {
    std::vector<Block>::iterator block;
    Block::iterator row;
    size_t index;
  };

  // Calls use(key) with each text that the row is found by.
  template <typename Use>
  static void ForEachKey(const std::string& nick, Use use);
  // The row that Remove would take.
  std::optional<Arrival> FirstBy(std::string_view nick) const;
  std::optional<Place> Find(std::string_view nick);
  void RemoveAt(std::vector<Block>::iterator block, Block::iterator row);

  // The rows in pieces, none of them empty, so that few rows move up when one goes.
  std::vector<Block> blocks_;
  std::set<std::pair<std::string, Arrival>> keys_;
  size_t size_ = 0;
  Arrival next_ = 0;
};

}  // namespace brindle
