#pragma once
// What the user set up and finds again at the next start: read in one go when the window opens,
// written in one go when it closes. The remembered searches are no part of it: they are read each
// time the search window opens.

#include <optional>
#include <string>
#include <vector>

#include "base/clock.h"
#include "base/files.h"
#include "settings/data_folder.h"
#include "settings/options.h"
#include "settings/stored_lists.h"
#include "settings/window_place.h"

namespace brindle {

struct StoredState {
  std::string nick;
  std::string alternateNick;
  std::optional<size_t> lastServer;  // row in `servers`
  std::vector<std::string> rooms;
  std::vector<IrcServer> servers;
  size_t secureNames = 0;  // of servers by TLS, in the settings file
  Options options;
  WindowPlace window;

  // How reading went. What could not be read is not written over, and neither is a state that was
  // never read.
  struct Results {
    LoadResult settings = LoadResult::kUnreadable;
    LoadResult rooms = LoadResult::kUnreadable;
    LoadResult servers = LoadResult::kUnreadable;
  } results;
};

// Window events run while the rooms are read.
StoredState LoadState(const Files& files, const DataPaths& paths, EventPump* events = nullptr);

// Nicks and server first, then the lists, then the options; the remembered searches go when the
// options say so. A file that cannot be written stays as it was, and the next one is tried: false
// when there was one.
bool SaveState(Files& files, const DataPaths& paths, const StoredState& state);

}  // namespace brindle
