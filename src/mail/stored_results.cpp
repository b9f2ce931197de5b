#include "mail/stored_results.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace brindle {
namespace {

constexpr char kSection[] = "results";
constexpr long long kLargestTwips = 150000;

}  // namespace

void StoredResults::SetLastSearch(const std::string& text) {
  settings_.WriteSetting("find", "last", text);
}

std::vector<Find> StoredResults::Finds() {
  const std::optional<int> days =
      options_.removeInactiveFinds ? std::optional(options_.FindDays()) : std::nullopt;
  Loaded<Find> finds = LoadFinds(files_, findsPath_, Today(), days);
  unreadable_ = finds.result == LoadResult::kUnreadable;
  return std::move(finds.entries);
}

void StoredResults::SetFinds(const std::vector<Find>& finds) {
  if (!unreadable_) SaveFinds(files_, finds, findsPath_);
}

ResultsGeometry StoredResults::Geometry() {
  const auto twips = [this](const char* key, int otherwise) {
    const long long stored = settings_.ReadNumber(kSection, key, std::to_string(otherwise));
    return static_cast<int>(std::clamp(stored, 0LL, kLargestTwips));
  };
  const ResultsGeometry first;
  return {twips("height", first.height), twips("width", first.width),
          twips("column1", first.column1), twips("column2", first.column2)};
}

void StoredResults::SetGeometry(const ResultsGeometry& geometry) {
  settings_.WriteSettings({{kSection, "height", std::to_string(geometry.height)},
                           {kSection, "width", std::to_string(geometry.width)},
                           {kSection, "column1", std::to_string(geometry.column1)},
                           {kSection, "column2", std::to_string(geometry.column2)}});
}

}  // namespace brindle
