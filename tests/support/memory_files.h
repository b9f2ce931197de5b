#pragma once
// Files in memory, which can be told to fail.

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/files.h"

namespace brindle {

class MemoryFiles : public Files {
 public:
  std::optional<std::string> Read(const std::string& path) const override {
    const auto file = files.find(path);
    if (file == files.end() || unreadable.contains(path)) return std::nullopt;
    return file->second;
  }

  bool Replace(const std::string& path, std::string_view content) override {
    if (full) return false;
    changes.push_back("replace " + path);
    files[path] = content;
    return true;
  }

  bool Remove(const std::string& path) override {
    changes.push_back("remove " + path);
    files.erase(path);
    return true;
  }

  bool FileExists(const std::string& path) const override { return files.contains(path); }

  std::map<std::string, std::string> files;
  std::set<std::string> unreadable;
  bool full = false;                 // nothing can be written
  std::vector<std::string> changes;  // what was done, in order
};

}  // namespace brindle
