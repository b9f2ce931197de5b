#pragma once
// The three lists that last between runs: channels.txt, irc_servers.txt and finds.txt.

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "base/dialogs.h"
#include "base/files.h"
#include "base/observed_list.h"
#include "irc/irc_servers.h"

namespace brindle {

enum class LoadResult {
  kLoaded,
  kMissing,     // the user has been told, where that is called for
  kUnreadable,  // the file is there but could not be read: do not write over it
};

// These two add what the file holds to the list; unusable lines are passed over. With `events`,
// window events run after each field. A missing file is told to the user.
LoadResult LoadChannels(const Files& files, Dialogs& dialogs, ObservedList<std::string>& channels,
                        const std::string& path, EventPump* events = nullptr);
LoadResult LoadServers(const Files& files, Dialogs& dialogs, IrcServers& servers,
                       const std::string& path);

// These rewrite the file whole. False when it could not be written; it is then as it was.
bool SaveChannels(Files& files, const ObservedList<std::string>& channels, const std::string& path);
bool SaveServers(Files& files, const IrcServers& servers, const std::string& path);

using DayNumber = std::int32_t;  // days since 1970-01-01

// A remembered search and the day on which it was last used.
struct Find {
  std::string text;
  DayNumber day = 0;
  friend bool operator==(const Find&, const Find&) = default;
};

inline const std::string& RowText(const Find& find) { return find.text; }

// Adds the stored finds to `finds`. With `days`, only those that were used less than so many days
// before `today`. A missing file is nothing to tell.
LoadResult LoadFinds(const Files& files, std::vector<Find>& finds, const std::string& path,
                     DayNumber today, std::optional<int> days);
bool SaveFinds(Files& files, const std::vector<Find>& finds, const std::string& path);

// Dates as the finds file holds them, "2026-11-21"; any other text is day 0.
DayNumber DayOf(const std::tm& localTime);
DayNumber DayFromText(std::string_view text);
std::string DayText(DayNumber day);

}  // namespace brindle
