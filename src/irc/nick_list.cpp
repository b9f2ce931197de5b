#include "irc/nick_list.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"
#include "base/utf8.h"

namespace brindle {
namespace {

constexpr size_t kBlockRows = 256;

}  // namespace

const std::string& NickList::operator[](size_t index) const {
  auto block = blocks_.begin();
  for (; index >= block->size(); ++block) index -= block->size();
  return (*block)[index].nick;
}

std::vector<std::string> NickList::Items() const {
  std::vector<std::string> items;
  for (const Block& block : blocks_) {
    for (const Row& row : block) items.push_back(row.nick);
  }
  return items;
}

template <typename Use>
void NickList::ForEachKey(const std::string& nick, Use use) {
  const std::string key = LowerCase(nick);
  use(key);
  use(key.substr(OffsetOfCharacter(key, 1)));
}

void NickList::Add(std::string_view nick) {
  Tell(ListChange::What::kInsert, size_, [&] {
    if (blocks_.empty() || blocks_.back().size() == kBlockRows) blocks_.emplace_back();
    blocks_.back().push_back({next_++, std::string(nick)});
    const Row& row = blocks_.back().back();
    ForEachKey(row.nick, [&](std::string key) { keys_.emplace(std::move(key), row.arrival); });
    ++size_;
  });
}

std::optional<NickList::Arrival> NickList::FirstBy(std::string_view nick) const {
  const std::string wanted = LowerCase(nick);
  const auto first = keys_.lower_bound({wanted, 0});
  if (first == keys_.end() || first->first != wanted) return std::nullopt;
  return first->second;
}

std::optional<NickList::Place> NickList::Find(std::string_view nick) {
  const std::optional<Arrival> arrival = FirstBy(nick);
  if (!arrival) return std::nullopt;
  // In the last block that begins no later.
  const auto begins = [](const Block& rows) { return rows.front().arrival; };
  const auto block = std::prev(std::ranges::upper_bound(blocks_, *arrival, {}, begins));
  const auto row = std::ranges::lower_bound(*block, *arrival, {}, &Row::arrival);
  auto index = static_cast<size_t>(row - block->begin());
  for (auto before = blocks_.begin(); before != block; ++before) index += before->size();
  return Place{block, row, index};
}

bool NickList::Remove(std::string_view nick) {
  const std::optional<Place> place = Find(nick);
  if (!place) return false;
  Tell(ListChange::What::kRemove, place->index, [&] { RemoveAt(place->block, place->row); });
  return true;
}

void NickList::Renew(std::string_view nick, const std::function<void()>& change) {
  if (const std::optional<Place> place = Find(nick)) {
    Tell(ListChange::What::kReplace, place->index, change);
  }
}

void NickList::RemoveAt(std::vector<Block>::iterator block, Block::iterator row) {
  ForEachKey(row->nick, [&](std::string key) { keys_.erase({std::move(key), row->arrival}); });
  block->erase(row);
  --size_;
  if (block->empty()) {
    blocks_.erase(block);
    return;
  }
  // Neighbours of few rows are joined, or a list that changes for days would be nothing but such.
  const auto joinWithNext = [this](std::vector<Block>::iterator left) {
    const auto right = std::next(left);
    if (right == blocks_.end() || left->size() + right->size() > kBlockRows / 2) return;
    std::move(right->begin(), right->end(), std::back_inserter(*left));
    blocks_.erase(right);
  };
  joinWithNext(block);
  if (block != blocks_.begin()) joinWithNext(std::prev(block));
}

void NickList::Clear() {
  Tell(ListChange::What::kClear, 0, [&] {
    blocks_.clear();
    keys_.clear();
    size_ = 0;
  });
}

}  // namespace brindle
