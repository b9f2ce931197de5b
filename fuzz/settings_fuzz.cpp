// The settings file and the stored lists: what is written reads back, and foreign lines survive.

#include <algorithm>

#include "base/encoding.h"
#include "base/text.h"
#include "base/utf8.h"
#include "fuzz/input.h"
#include "settings/endpoint.h"
#include "settings/options.h"
#include "settings/secure_servers.h"
#include "settings/stored_lists.h"
#include "support/memory.h"

using namespace brindle;
using fuzz::Require;

namespace {

// Lines that no setting of ours is in.
std::vector<std::string> Foreign(const std::string& text) {
  std::vector<std::string> lines = fuzz::LinesOf(text);
  std::erase_if(lines, [](const std::string& line) { return !line.starts_with(';'); });
  return lines;
}

void CheckValue(const std::string& file, const Setting& setting) {
  SettingsText text(file);
  const std::string before = text.Text();
  text.Write(setting);
  const std::string after = text.Text();
  Require(Foreign(after) == Foreign(before), "a foreign line", after);
  const bool storable =
      FirstLine(setting.section) == setting.section && FirstLine(setting.key) == setting.key;
  if (!storable || after == before) return;
  const std::string_view value = FirstLine(setting.value);
  if (!IsValidUtf8(value) || value.size() > SettingsText::kLongestValue) return;
  Require(SettingsText(after).Read(setting.section, setting.key) == value, "does not read back",
          after);
}

void CheckLists(const std::string& bytes) {
  MemoryFiles files;
  files.files["list"] = bytes;
  const Loaded<std::string> rooms = LoadChannels(files, "list");
  const Loaded<IrcServer> servers = LoadServers(files, "list");
  SaveChannels(files, rooms.entries, "rooms");
  SaveServers(files, servers.entries, "servers");
  Require(LoadChannels(files, "rooms").entries == rooms.entries, "rooms", bytes);
  Require(LoadServers(files, "servers").entries == servers.entries, "servers", bytes);
  for (const std::string& room : rooms.entries) {
    Require(room.starts_with('#') && room.find_first_of(" \r\n") == std::string::npos, "room",
            room);
  }
  LoadFinds(files, "list", 20'000, 7);
}

}  // namespace

void fuzz::Try(Bytes input) {
  const unsigned what = input.Byte();
  if (what % 3 == 0) {
    const Setting setting{input.Text(), input.Text(), input.Text()};
    CheckValue(std::string(input.Rest()), setting);
  } else if (what % 3 == 1) {
    CheckLists(std::string(input.Rest()));
  } else {
    const std::string stored = OptionsText(ReadOptions(SettingsText(input.Rest())));
    Require(OptionsText(ReadOptions(SettingsText(stored))) == stored, "an option", stored);
  }
}
