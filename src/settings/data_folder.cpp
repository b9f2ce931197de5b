#include "settings/data_folder.h"

#include <filesystem>

namespace brindle {

std::string DataFolder(const FolderFacts& facts) {
  if (!facts.chosen.empty()) return facts.chosen;
  return facts.programIsWritable || facts.programHasSettings ? facts.program : facts.user;
}

DataPaths PathsIn(const std::string& folder) {
  std::string start = folder;
  constexpr char kSeparator = static_cast<char>(std::filesystem::path::preferred_separator);
  if (!start.empty() && start.back() != '/' && start.back() != kSeparator) start += kSeparator;
  return {start + kSettingsName, start + "channels.txt", start + "irc_servers.txt",
          start + "finds.txt"};
}

}  // namespace brindle
