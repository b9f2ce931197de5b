#include "settings/settings_file.h"

#include <optional>

namespace brindle {

std::string ReadSetting(const Files& files, std::string_view section, std::string_view key,
                        std::string_view otherwise, const std::string& file) {
  return SettingsText(files.Read(file).value_or("")).Read(section, key, otherwise);
}

bool WriteSetting(Files& files, std::string_view section, std::string_view key,
                  std::string_view value, const std::string& file) {
  return WriteSettings(files, {{std::string(section), std::string(key), std::string(value)}}, file);
}

bool WriteSettings(Files& files, const std::vector<Setting>& settings, const std::string& file) {
  const std::optional<std::string> old = files.Read(file);
  if (!old && files.FileExists(file)) return false;
  SettingsText text(old.value_or(""));
  for (const Setting& setting : settings) text.Write(setting);
  return files.Replace(file, text.Text());
}

}  // namespace brindle
