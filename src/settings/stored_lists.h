#pragma once
// The three lists that last between runs: channels.txt, irc_servers.txt and finds.txt.

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "base/files.h"

namespace brindle {

enum class LoadResult {
  kLoaded,
  kMissing,
  kUnreadable,  // the file is there but could not be read: do not write over it
};

template <typename Entry>
struct Loaded {
  LoadResult result = LoadResult::kMissing;
  std::vector<Entry> entries;
};

// An IRC server that the user has entered.
struct IrcServer {
  std::string host;
  std::int32_t port = 0;
  bool tls = false;  // kept in the settings file: the list has no place for it
  friend bool operator==(const IrcServer&, const IrcServer&) = default;
};

inline const std::string& RowText(const IrcServer& server) { return server.host; }

// What the file holds; unusable lines are passed over. With `events`, window events run after each
// room.
Loaded<std::string> LoadChannels(const Files& files, const std::string& path,
                                 EventPump* events = nullptr);
Loaded<IrcServer> LoadServers(const Files& files, const std::string& path);

// These rewrite the file whole. False when it could not be written; it is then as it was.
bool SaveChannels(Files& files, const std::vector<std::string>& rooms, const std::string& path);
bool SaveServers(Files& files, const std::vector<IrcServer>& servers, const std::string& path);

using DayNumber = std::int32_t;  // days since 1970-01-01

// A remembered search and the day on which it was last used.
struct Find {
  std::string text;
  DayNumber day = 0;
  friend bool operator==(const Find&, const Find&) = default;
};

inline const std::string& RowText(const Find& find) { return find.text; }

// With `days`, only those finds that were used less than so many days before `today`.
Loaded<Find> LoadFinds(const Files& files, const std::string& path, DayNumber today,
                       std::optional<int> days);
bool SaveFinds(Files& files, const std::vector<Find>& finds, const std::string& path);

// Dates as the finds file holds them, "2026-11-21"; any other text is day 0.
DayNumber DayOf(const std::tm& localTime);
DayNumber DayFromText(std::string_view text);
std::string DayText(DayNumber day);

}  // namespace brindle
