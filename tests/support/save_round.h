#pragma once
// One round of saving, every part of every file marked with the same number, and the check that a
// file is whole: all its parts carry one number.

#include <set>
#include <string>
#include <vector>

#include "settings/data_folder.h"
#include "settings/settings_file.h"
#include "settings/stored_lists.h"

namespace brindle {

inline constexpr int kParts = 400;  // enough to need several blocks on the disk

inline bool SaveRound(Files& files, const DataPaths& paths, int round) {
  const std::string mark = std::to_string(round);
  std::vector<IrcServer> servers;
  std::vector<std::string> channels;
  std::vector<Find> finds;
  std::vector<Setting> settings;
  for (int i = 0; i < kParts; ++i) {
    channels.push_back("#room-number-" + std::to_string(i) + "-" + mark);
    servers.push_back({"host-number-" + std::to_string(i) + "-" + mark, i});
    finds.push_back({"find number " + std::to_string(i) + "-" + mark, i});
    settings.push_back({"section", "key" + std::to_string(i), "value-" + mark});
  }
  return SaveServers(files, servers, paths.servers) &&
         SaveChannels(files, channels, paths.channels) && SaveFinds(files, finds, paths.finds) &&
         WriteSettings(files, settings, paths.settings);
}

// Empty when each file holds all parts of one round, else what is wrong.
inline std::string WrongWithSaved(const Files& files, const DataPaths& paths) {
  const auto judge = [](const char* what, const std::vector<std::string>& parts) -> std::string {
    std::set<std::string> marks;
    for (const std::string& part : parts) {
      const size_t hyphen = part.rfind('-');
      marks.insert(hyphen == std::string::npos ? "none" : part.substr(hyphen + 1));
    }
    if (parts.size() == kParts && marks.size() == 1 && *marks.begin() != "none") return "";
    return std::string(what) + " has " + std::to_string(parts.size()) + " parts of " +
           std::to_string(marks.size()) + " rounds; ";
  };
  const auto texts = [](const auto& rows) {
    std::vector<std::string> all;
    for (const auto& row : rows.entries) all.push_back(RowText(row));
    return all;
  };
  std::vector<std::string> values;
  const SettingsText settings(files.Read(paths.settings).value_or(""));
  for (int i = 0; i < kParts; ++i) {
    values.push_back(settings.Read("section", "key" + std::to_string(i)));
  }
  return judge("servers", texts(LoadServers(files, paths.servers))) +
         judge("channels", LoadChannels(files, paths.channels).entries) +
         judge("finds", texts(LoadFinds(files, paths.finds, 0, std::nullopt))) +
         judge("settings", values);
}

}  // namespace brindle
