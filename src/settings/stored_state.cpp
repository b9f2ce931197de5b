#include "settings/stored_state.h"

#include <optional>
#include <utility>

#include "settings/endpoint.h"
#include "settings/secure_servers.h"
#include "settings/settings_file.h"

namespace brindle {
namespace {

// A row that the list does not have is no selection.
std::optional<size_t> LastServer(const SettingsText& settings, size_t servers) {
  const long long row = settings.ReadNumber("server", "last used", "-1");
  if (row < 0 || row >= static_cast<long long>(servers)) return std::nullopt;
  return static_cast<size_t>(row);
}

std::string TlsKey(size_t row) { return "tls" + std::to_string(row); }

// Marks the servers that are reached by TLS; how many names there are.
size_t ReadTls(const SettingsText& settings, std::vector<IrcServer>& servers) {
  for (size_t row = 0;; ++row) {
    const std::string name = settings.Read(kSecureServersSection, TlsKey(row));
    if (name.empty()) return row;
    for (IrcServer& server : servers) {
      server.tls |= EndpointText(server.host, server.port) == name;
    }
  }
}

// A shorter list than before ends with an empty row.
void AppendTls(const StoredState& state, std::vector<Setting>& settings) {
  size_t row = 0;
  for (const IrcServer& server : state.servers) {
    if (!server.tls) continue;
    settings.push_back(
        {kSecureServersSection, TlsKey(row++), EndpointText(server.host, server.port)});
  }
  if (row < state.secureNames) settings.push_back({kSecureServersSection, TlsKey(row), ""});
}

}  // namespace

StoredState LoadState(const Files& files, const DataPaths& paths, EventPump* events) {
  StoredState state;
  Loaded<std::string> rooms = LoadChannels(files, paths.channels, events);
  Loaded<IrcServer> servers = LoadServers(files, paths.servers);
  const bool hasSettings = files.FileExists(paths.settings);
  const std::optional<std::string> bytes = files.Read(paths.settings);
  const SettingsText settings(bytes.value_or(""));

  state.nick = settings.Read("nicks", "preferred");
  state.alternateNick = settings.Read("nicks", "alternate");
  state.lastServer = LastServer(settings, servers.entries.size());
  state.rooms = std::move(rooms.entries);
  state.servers = std::move(servers.entries);
  state.secureNames = ReadTls(settings, state.servers);
  state.options = ReadOptions(settings);
  state.window = ReadWindowPlace(settings);
  state.results.settings = bytes         ? LoadResult::kLoaded
                           : hasSettings ? LoadResult::kUnreadable
                                         : LoadResult::kMissing;
  state.results.rooms = rooms.result;
  state.results.servers = servers.result;
  return state;
}

bool SaveState(Files& files, const DataPaths& paths, const StoredState& state) {
  const bool writeSettings = state.results.settings != LoadResult::kUnreadable;
  bool saved = true;
  if (writeSettings) {
    saved &= WriteSettings(
        files,
        {{"nicks", "preferred", state.nick},
         {"nicks", "alternate", state.alternateNick},
         {"server", "last used", state.lastServer ? std::to_string(*state.lastServer) : "-1"}},
        paths.settings);
  }
  if (state.results.servers != LoadResult::kUnreadable) {
    saved &= SaveServers(files, state.servers, paths.servers);
  }
  if (state.results.rooms != LoadResult::kUnreadable) {
    saved &= SaveChannels(files, state.rooms, paths.channels);
  }
  if (writeSettings) {
    std::vector<Setting> options;
    AppendOptions(state.options, options);
    AppendWindowPlace(state.window, options);
    AppendTls(state, options);
    saved &= WriteSettings(files, options, paths.settings);
  }
  if (state.options.clearFindsOnExit) saved &= files.Remove(paths.finds);
  return saved;
}

}  // namespace brindle
