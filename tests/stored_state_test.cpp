#include "settings/stored_state.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/memory_files.h"

namespace brindle {
namespace {

using Texts = std::vector<std::string>;

class StoredStateTest : public testing::Test {
 protected:
  StoredState Load() { return LoadState(files, paths); }

  MemoryFiles files;
  const DataPaths paths = PathsIn("/d");
};

TEST_F(StoredStateTest, WhatWasSavedIsLoaded) {
  const std::string before =
      "; mine\r\n[list]\r\nforecolor=255\r\n[screen name]\r\nlast used= My Name\r\n";
  files.files = {{paths.settings, before}, {paths.finds, ""}};
  StoredState state = Load();
  state.nick = "joe";
  state.alternateNick = "joe2";
  state.lastServer = 1;
  state.rooms = {"#new"};
  state.servers = {{"::1", 1, true}, {"i", 2}};
  state.options.stayOnTop = true;
  state.options.listForecolor = kWhite;
  EXPECT_TRUE(SaveState(files, paths, state));
  EXPECT_EQ(files.changes, (Texts{"replace " + paths.settings, "replace " + paths.servers,
                                  "replace " + paths.channels, "replace " + paths.settings}));
  // The colours are stored when they are picked, and the screen name never is.
  const std::string& ini = files.files[paths.settings];
  EXPECT_TRUE(ini.starts_with(before + "[nicks]\r\npreferred=joe\r\nalternate=joe2\r\n"
                                       "[server]\r\nlast used=1\r\n[misc options]\r\n"))
      << ini;

  state = Load();
  EXPECT_EQ(state.nick + "/" + state.alternateNick, "joe/joe2");
  EXPECT_EQ(state.lastServer, 1U);
  EXPECT_EQ(state.rooms, Texts{"#new"});
  EXPECT_EQ(state.servers, (std::vector<IrcServer>{{"::1", 1, true}, {"i", 2}}));
  EXPECT_TRUE(state.options.stayOnTop);
  EXPECT_EQ(state.options.listForecolor, kPureRed);
  state.servers[0].tls = false;
  state.options.clearFindsOnExit = true;
  EXPECT_TRUE(SaveState(files, paths, state));
  EXPECT_EQ(files.changes.back(), "remove " + paths.finds);
  EXPECT_FALSE(Load().servers[0].tls);
  files.full = true;
  EXPECT_FALSE(SaveState(files, paths, state));
}

TEST_F(StoredStateTest, OnlyARowThatExistsIsSelected) {
  files.files[paths.servers] = "h:1\ni:2\n";
  const std::pair<std::string, std::optional<size_t>> cases[] = {
      {"1", 1}, {"x", 0}, {"2", {}}, {"-1", {}}, {"-2", {}}, {"99999999999999999999", {}}};
  for (const auto& [stored, row] : cases) {
    files.files[paths.settings] = "[server]\nlast used=" + stored;
    EXPECT_EQ(Load().lastServer, row) << stored;
  }
}

TEST_F(StoredStateTest, WhatWasNotReadIsNotWrittenOver) {
  EXPECT_TRUE(SaveState(files, paths, {}));
  files.files = {{paths.settings, "[x]\n"}, {paths.channels, "#a\n"}, {paths.servers, "h:1\n"}};
  files.unreadable = {paths.settings, paths.channels, paths.servers};
  const StoredState state = Load();
  files.unreadable.clear();
  EXPECT_TRUE(SaveState(files, paths, state));
  EXPECT_EQ(files.changes, Texts{});
}

}  // namespace
}  // namespace brindle
