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
  std::vector<std::string> lines;
  std::string ends = text;  // a CR alone is one too
  std::replace(ends.begin(), ends.end(), '\r', '\n');
  for (const std::string_view line : Split(ends, "\n")) {
    if (line.starts_with(';')) lines.emplace_back(line);
  }
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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  fuzz::Bytes input(data, size);
  const unsigned what = input.Byte();
  if (what % 3 == 0) {
    const Setting setting{input.Text(), input.Text(), input.Text()};
    CheckValue(std::string(input.Rest()), setting);
  } else if (what % 3 == 1) {
    CheckLists(std::string(input.Rest()));
  } else {
    const SettingsText text(input.Rest());
    const Options options = ReadOptions(text);
    std::vector<Setting> all;
    AppendOptions(options, all);
    SettingsText stored("");
    for (const Setting& setting : all) stored.Write(setting);
    std::vector<Setting> again;
    AppendOptions(ReadOptions(SettingsText(stored.Text())), again);
    for (size_t i = 0; i < all.size(); ++i) {
      Require(all[i].value == again[i].value, "an option", all[i].key);
    }
  }
  return 0;
}
