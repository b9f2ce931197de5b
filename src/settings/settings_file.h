#pragma once
// The settings file: every read and every write goes to the file; nothing is kept in memory.
// Failure is not reported by a message: a missing file yields defaults, one that cannot be written
// loses the value.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/files.h"
#include "settings/settings_text.h"

namespace brindle {

// The value of `key` in `section` of the INI file at `file`. `otherwise` stands in for a value that
// is missing or empty.
std::string ReadSetting(const Files& files, std::string_view section, std::string_view key,
                        std::string_view otherwise, const std::string& file);

// Writes one value, or several in one replacement of the file. False when nothing was written; a
// file that is there but cannot be read is left alone.
bool WriteSetting(Files& files, std::string_view section, std::string_view key,
                  std::string_view value, const std::string& file);
bool WriteSettings(Files& files, const std::vector<Setting>& settings, const std::string& file);

// One such file, by its path.
class SettingsFile {
 public:
  // `files` must outlive this.
  SettingsFile(Files& files, std::string path) : files_(files), path_(std::move(path)) {}

  const std::string& Path() const { return path_; }

  std::string ReadSetting(std::string_view section, std::string_view key,
                          std::string_view otherwise = "") const {
    return brindle::ReadSetting(files_, section, key, otherwise, path_);
  }
  // As a number: the leading numeric part, 0 when there is none.
  long long ReadNumber(std::string_view section, std::string_view key,
                       std::string_view otherwise) const {
    return LeadingNumber(ReadSetting(section, key, otherwise));
  }
  bool WriteSetting(std::string_view section, std::string_view key, std::string_view value) {
    return brindle::WriteSetting(files_, section, key, value, path_);
  }
  bool WriteSettings(const std::vector<Setting>& settings) {
    return brindle::WriteSettings(files_, settings, path_);
  }

 private:
  Files& files_;
  std::string path_;
};

}  // namespace brindle
