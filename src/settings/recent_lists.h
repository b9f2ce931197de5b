#pragma once
// The list files that were loaded last, the latest first, kept in the settings file.

#include <string>
#include <vector>

#include "settings/settings_file.h"

namespace brindle {

class RecentLists {
 public:
  static constexpr size_t kMost = 8;

  // `settings` must outlive this.
  explicit RecentLists(SettingsFile& settings) : settings_(settings) {}

  // In UTF-8.
  std::vector<std::string> Paths() const;
  // Puts `path` first. One that the settings file could not give back is left out.
  void Add(const std::string& path);
  void Remove(const std::string& path);

 private:
  // In place of the `before` paths that are stored.
  void Store(const std::vector<std::string>& paths, size_t before);

  SettingsFile& settings_;
};

}  // namespace brindle
