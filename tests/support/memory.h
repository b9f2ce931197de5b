#pragma once
// Files in memory, and bytes that are handed out in small pieces; both can be told to fail. And
// options as a settings file holds them.

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/files.h"
#include "mail/list_reader.h"
#include "settings/options.h"

namespace brindle {

class MemoryFiles : public Files {
 public:
  std::optional<std::string> Read(const std::string& path) const override {
    const auto file = files.find(path);
    if (file == files.end() || unreadable.contains(path)) return std::nullopt;
    return file->second;
  }

  bool Replace(const std::string& path, std::string_view content) override {
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
  std::vector<std::string> changes;  // what was done, in order
};

class MemorySource : public BlockSource {
 public:
  explicit MemorySource(std::string_view bytes, size_t piece = std::numeric_limits<size_t>::max())
      : bytes_(bytes), piece_(piece) {}

  // Reading fails once so many bytes have been read.
  void FailAfter(size_t bytes) { failAfter_ = bytes; }

  size_t Read(char* into, size_t capacity) override {
    const size_t end = std::min(bytes_.size(), failAfter_);
    const size_t size = std::min({capacity, piece_, end - at_});
    bytes_.copy(into, size, at_);
    at_ += size;
    return size;
  }

  bool Failed() const override { return at_ == failAfter_; }
  void Rewind() override { at_ = 0; }
  size_t ExpectedSize() const override { return bytes_.size(); }

 private:
  std::string_view bytes_;
  size_t piece_;
  size_t at_ = 0;
  size_t failAfter_ = std::numeric_limits<size_t>::max();
};

inline std::string OptionsText(const Options& options) {
  std::vector<Setting> all;
  AppendOptions(options, all);
  SettingsText text("");
  for (const Setting& setting : all) text.Write(setting);
  return text.Text();
}

}  // namespace brindle
