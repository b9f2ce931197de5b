#include "settings/finds.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "base/text.h"

namespace brindle {

void Finds::Load() {
  const std::optional<int> days =
      options_.removeInactiveFinds ? std::optional(options_.FindDays()) : std::nullopt;
  Loaded<Find> stored = LoadFinds(files_, path_, Today(), days);
  unreadable_ = stored.result == LoadResult::kUnreadable;
  items_.Clear();
  for (Find& find : stored.entries) items_.Add(std::move(find));
}

void Finds::Save() {
  if (!unreadable_) SaveFinds(files_, items_.Items(), path_);
}

void Finds::Remember(const std::string& text) {
  const std::vector<Find>& known = items_.Items();
  const auto same = std::find_if(
      known.begin(), known.end(),
      [wanted = MatchKey(text)](const Find& find) { return MatchKey(find.text) == wanted; });
  if (same != known.end()) items_.RemoveAt(static_cast<size_t>(same - known.begin()));
  items_.Add({text, Today()});
}

void Finds::Clear() {
  unreadable_ = !files_.Remove(path_);
  items_.Clear();
}

}  // namespace brindle
