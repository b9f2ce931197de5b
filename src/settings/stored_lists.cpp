#include "settings/stored_lists.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>

#include "base/encoding.h"
#include "base/text.h"
#include "base/utf8.h"
#include "settings/endpoint.h"
#include "settings/settings_text.h"

namespace brindle {
namespace {

constexpr std::string_view kHeader =
    "// PLEASE DO NOT TRY TO MODIFY THIS FILE DIRECTLY.\r\n"
    "// INSTEAD PLEASE USE THE ABILITY TO DO SO IN THE\r\n"
    "// PROGRAM. THANK YOU.\r\n"
    " \r\n";
constexpr std::string_view kFieldEnds(",\r\n\0", 4);

constexpr const char* kFindsSection = "finds";
// More than a list box can show: a file that claims more is damaged.
constexpr long long kMostFinds = 32767;

// The fields of a file in order: they end at commas and at line ends.
std::vector<std::string> FieldsOf(std::string_view file) {
  const std::string text = Utf8FromMarked(file);
  const std::string_view bytes = WithoutUtf8Mark(text);
  std::vector<std::string> fields;
  for (size_t begin = 0; begin < bytes.size();) {
    const size_t end = std::min(bytes.find_first_of(kFieldEnds, begin), bytes.size());
    fields.push_back(DecodeReceived(bytes.substr(begin, end - begin)));
    begin = end + 1;
  }
  return fields;
}

Loaded<std::string> LoadFields(const Files& files, const std::string& path) {
  if (!files.FileExists(path)) return {LoadResult::kMissing, {}};
  const std::optional<std::string> bytes = files.Read(path);
  if (!bytes) return {LoadResult::kUnreadable, {}};
  return {LoadResult::kLoaded, FieldsOf(*bytes)};
}

// One line of a file; nothing in an entry can end it early.
void AppendLine(std::string& text, std::string_view line) {
  text += FirstLine(line);
  text += kCrLf;
}

// A room's name ends where a line of the protocol would take it to end.
std::string RoomName(std::string_view field) {
  const auto ends = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
  return {field.begin(), std::find_if(field.begin(), field.end(), ends)};
}

}  // namespace

Loaded<std::string> LoadChannels(const Files& files, const std::string& path, EventPump* events) {
  const Loaded<std::string> fields = LoadFields(files, path);
  Loaded<std::string> rooms{fields.result, {}};
  for (const std::string& field : fields.entries) {
    if (field.starts_with('#')) rooms.entries.push_back(RoomName(field));
    if (events != nullptr) events->LetEventsRun(0);
  }
  return rooms;
}

Loaded<IrcServer> LoadServers(const Files& files, const std::string& path) {
  using Port = std::numeric_limits<std::int16_t>;
  const Loaded<std::string> fields = LoadFields(files, path);
  Loaded<IrcServer> servers{fields.result, {}};
  for (const std::string& field : fields.entries) {
    if (field.starts_with('/')) continue;
    const auto parts = EndpointParts(field);
    if (parts.size() != 2 || !IsNumericText(parts[1])) continue;
    // The host stays when its port is out of range; the user can type a port again.
    servers.entries.push_back(
        {std::string(parts[0]), PortNumber(parts[1], Port::min(), Port::max()).value_or(0)});
  }
  return servers;
}

bool SaveChannels(Files& files, const std::vector<std::string>& rooms, const std::string& path) {
  std::string text(kHeader);
  for (const std::string& room : rooms) AppendLine(text, room);
  return files.Replace(path, text);
}

bool SaveServers(Files& files, const std::vector<IrcServer>& servers, const std::string& path) {
  std::string text(kHeader);
  for (const IrcServer& server : servers) {
    AppendLine(text, EndpointText(server.host, server.port));
  }
  return files.Replace(path, text);
}

Loaded<Find> LoadFinds(const Files& files, const std::string& path, DayNumber today,
                       std::optional<int> days) {
  if (!files.FileExists(path)) return {LoadResult::kMissing, {}};
  const std::optional<std::string> bytes = files.Read(path);
  if (!bytes) return {LoadResult::kUnreadable, {}};
  const SettingsText text(*bytes);
  const long long last = std::min(text.ReadNumber(kFindsSection, "count", "0"), kMostFinds - 1);
  Loaded<Find> finds{LoadResult::kLoaded, {}};
  for (long long i = 0; i <= last; ++i) {
    const std::string index = std::to_string(i);
    const DayNumber day = DayFromText(text.Read(kFindsSection, "date" + index));
    if (days && today - day >= *days) continue;
    finds.entries.push_back({text.Read(kFindsSection, "item" + index), day});
  }
  return finds;
}

bool SaveFinds(Files& files, const std::vector<Find>& finds, const std::string& path) {
  std::string text;
  AppendLine(text, "[" + std::string(kFindsSection) + "]");
  const auto append = [&text](const std::string& key, const std::string& value) {
    AppendLine(text, SettingLine(key, value));
  };
  append("count", std::to_string(static_cast<long long>(finds.size()) - 1));
  for (size_t i = 0; i < finds.size(); ++i) {
    append("item" + std::to_string(i), finds[i].text);
    append("date" + std::to_string(i), DayText(finds[i].day));
  }
  return files.Replace(path, text);
}

DayNumber DayOf(const std::tm& localTime) {
  const std::chrono::year_month_day date(
      std::chrono::year(localTime.tm_year + 1900),
      std::chrono::month(static_cast<unsigned>(localTime.tm_mon + 1)),
      std::chrono::day(static_cast<unsigned>(localTime.tm_mday)));
  return static_cast<DayNumber>(std::chrono::sys_days(date).time_since_epoch().count());
}

DayNumber DayFromText(std::string_view text) {
  // Digits where the form has them, hyphens where it has those.
  constexpr std::string_view kForm = "dddd-dd-dd";
  const bool fits =
      std::equal(text.begin(), text.end(), kForm.begin(), kForm.end(),
                 [](char c, char form) { return form == '-' ? c == '-' : c >= '0' && c <= '9'; });
  if (!fits) return 0;
  const auto number = [text](size_t at, size_t size) {
    return static_cast<int>(LeadingNumber(text.substr(at, size)));
  };
  const std::chrono::year_month_day date(std::chrono::year(number(0, 4)),
                                         std::chrono::month(static_cast<unsigned>(number(5, 2))),
                                         std::chrono::day(static_cast<unsigned>(number(8, 2))));
  if (!date.ok()) return 0;
  return static_cast<DayNumber>(std::chrono::sys_days(date).time_since_epoch().count());
}

std::string DayText(DayNumber day) {
  const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(day))};
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
  return text;
}

}  // namespace brindle
