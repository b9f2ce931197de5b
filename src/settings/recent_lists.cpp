#include "settings/recent_lists.h"

#include <algorithm>

#include "base/text.h"
#include "settings/settings_text.h"

namespace brindle {
namespace {

constexpr char kSection[] = "window";

std::string KeyOf(size_t place) { return "list" + std::to_string(place); }

// What comes back as it was written.
bool CanBeStored(const std::string& path) {
  return path.size() <= SettingsText::kLongestValue && FirstLine(path) == path &&
         TrimBlanks(path) == path && !path.starts_with('"');
}

}  // namespace

std::vector<std::string> RecentLists::Paths() const {
  std::vector<std::string> paths;
  for (size_t place = 0; place < kMost; ++place) {
    std::string path = settings_.ReadSetting(kSection, KeyOf(place));
    if (!path.empty()) paths.push_back(std::move(path));
  }
  return paths;
}

void RecentLists::Add(const std::string& path) {
  if (!CanBeStored(path)) return;
  std::vector<std::string> paths = Paths();
  if (!paths.empty() && paths.front() == path) return;
  const size_t before = paths.size();
  std::erase(paths, path);
  paths.insert(paths.begin(), path);
  paths.resize(std::min(paths.size(), kMost));
  Store(paths, before);
}

void RecentLists::Remove(const std::string& path) {
  std::vector<std::string> paths = Paths();
  const size_t before = paths.size();
  if (std::erase(paths, path) > 0) Store(paths, before);
}

// Lists that cannot be kept are no reason to trouble the user.
void RecentLists::Store(const std::vector<std::string>& paths, size_t before) {
  std::vector<Setting> settings;
  for (size_t place = 0; place < std::max(paths.size(), before); ++place) {
    settings.push_back({kSection, KeyOf(place), place < paths.size() ? paths[place] : ""});
  }
  settings_.WriteSettings(settings);
}

}  // namespace brindle
