// What is kept in files: the lists, and everything that is set up.
#include "settings/stored_lists.h"

#include <gtest/gtest.h>

#include "settings/stored_state.h"
#include "support/memory.h"

namespace brindle {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

const std::string kHeader =
    "// PLEASE DO NOT TRY TO MODIFY THIS FILE DIRECTLY.\r\n"
    "// INSTEAD PLEASE USE THE ABILITY TO DO SO IN THE\r\n"
    "// PROGRAM. THANK YOU.\r\n"
    " \r\n";

struct StoredLists : testing::Test {
  Texts ChannelsFrom(const std::string& text) {
    files.files["f"] = text;
    return LoadChannels(files, "f").entries;
  }
  Texts ServersFrom(const std::string& text) {
    files.files["f"] = text;
    Texts entries;
    for (const IrcServer& server : LoadServers(files, "f").entries) {
      entries.push_back(server.host + " " + std::to_string(server.port));
    }
    return entries;
  }
  std::vector<Find> FindsFrom(const std::string& text, std::optional<int> days = std::nullopt) {
    files.files["f"] = text;
    return LoadFinds(files, "f", DayFromText("2026-11-21"), days).entries;
  }

  MemoryFiles files;
};

TEST_F(StoredLists, RoomsAndServersAreTheFieldsThatLookLikeThem) {
  const std::pair<std::string, Texts> rooms[] = {
      {kHeader + "#mailroom\r\n#b\r\n#mailroom\r\n", {"#mailroom", "#b", "#mailroom"}},
      {"\xEF\xBB\xBF#a\nmailroom\n #b\n#c,#d\r#e", {"#a", "#c", "#d", "#e"}},
      {"\xFF\xFE#\0a\0\n\0#\0\xE4\0"s, {"#a", "#\u00E4"}},
      {"#a\0#b\r\n"s, {"#a", "#b"}},
  };
  for (const auto& [text, entries] : rooms) EXPECT_EQ(ChannelsFrom(text), entries) << text;
  const std::pair<std::string, Texts> servers[] = {
      {kHeader + "host:6667\r\nHost:7000\r\nhost:6667\r\n",
       {"host 6667", "Host 7000", "host 6667"}},
      {"host:abc\nhost\nhost:\n/host:6667\na:b:1\n::\n2001:db8::1\n \n", {}},
      {"a: 7 \nb:-5\nc:6667.5\n:9\nd:1,e:2", {"a 7", "b -5", "c 6668", " 9", "d 1", "e 2"}},
      // The host survives a port beyond 16 bits, the port does not.
      {"a:32767\nb:32768\nc:-32769\nd:" + std::string(400, '9') + "\ne:1\nf:-32768",
       {"a 32767", "b 0", "c 0", "d 0", "e 1", "f -32768"}},
  };
  for (const auto& [text, entries] : servers) EXPECT_EQ(ServersFrom(text), entries) << text;
}

TEST_F(StoredLists, FilesAreWrittenByteForByte) {
  EXPECT_TRUE(SaveChannels(files, {"#b", "#a", "#x\r\n#injected"}, "f"));
  EXPECT_EQ(files.files["f"], kHeader + "#b\r\n#a\r\n#x\r\n");
  EXPECT_TRUE(SaveServers(files, {{"host", 6667}, {"b", 40000}, {"/c", 1}}, "g"));
  EXPECT_EQ(files.files["g"], kHeader + "host:6667\r\nb:40000\r\n[/c]:1\r\n");

  const std::vector<Find> finds = {{"two words", DayFromText("2026-11-21")}, {" \"q\" ", 0}};
  EXPECT_TRUE(SaveFinds(files, finds, "h"));
  EXPECT_EQ(files.files["h"],
            "[finds]\r\ncount=1\r\nitem0=two words\r\ndate0=2026-11-21\r\n"
            "item1=\" \"q\" \"\r\ndate1=1970-01-01\r\n");
  EXPECT_TRUE(SaveFinds(files, {}, "h"));
  EXPECT_EQ(files.files["h"], "[finds]\r\ncount=-1\r\n");
  EXPECT_EQ(FindsFrom(files.files["h"]), std::vector<Find>{});
}

TEST_F(StoredLists, FindsFollowTheirCountAndTheirAge) {
  EXPECT_EQ(FindsFrom("[finds]\n"), (std::vector<Find>{{"", 0}}));
  EXPECT_EQ(FindsFrom("[finds]\ncount=2\nitem0=a\nitem2=c\ndate2=1970-01-03\n"),
            (std::vector<Find>{{"a", 0}, {"", 0}, {"c", 2}}));
  EXPECT_LT(FindsFrom("[finds]\ncount=2000000000\n").size(), 40000U);
  const std::string aged =
      "[finds]\ncount=3\nitem0=today\ndate0=2026-11-21\nitem1=yesterday\ndate1=2026-11-20\n"
      "item2=tomorrow\ndate2=2026-11-22\nitem3=undated\n";
  const auto texts = [&](std::optional<int> days) {
    Texts kept;
    for (const Find& find : FindsFrom(aged, days)) kept.push_back(find.text);
    return kept;
  };
  EXPECT_EQ(texts(1), (Texts{"today", "tomorrow"}));
  EXPECT_EQ(texts(2), (Texts{"today", "yesterday", "tomorrow"}));
}

TEST_F(StoredLists, DatesAreIsoOrNothing) {
  const std::pair<const char*, DayNumber> cases[] = {
      {"1970-01-02", 1}, {"1969-12-31", -1}, {"2024-02-29", 19782}, {"2023-02-29", 0},
      {"2026-13-01", 0}, {"21.11.2026", 0},  {"2026-11-21 ", 0},    {"-026-11-21", 0}};
  for (const auto& [text, day] : cases) EXPECT_EQ(DayFromText(text), day) << text;
  EXPECT_EQ(DayText(-719162) + DayText(19782), "0001-01-012024-02-29");
}

struct StoredStateTest : testing::Test {
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
  state.window = {{{1, -2, 3, 4}}, true, 5, 6, 7, 0};
  const WindowPlace place = state.window;
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
  EXPECT_EQ(state.window, place);
  EXPECT_TRUE(state.options.stayOnTop);
  EXPECT_EQ(state.options.listForecolor, kPureRed);
  state.servers[0].tls = false;
  state.options.clearFindsOnExit = true;
  EXPECT_TRUE(SaveState(files, paths, state));
  EXPECT_EQ(files.changes.back(), "remove " + paths.finds);
  EXPECT_FALSE(Load().servers[0].tls);
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

TEST_F(StoredStateTest, APlaceThatNoWindowCanHaveIsNone) {
  const std::pair<std::string, const char*> cases[] = {
      {"height=4\nleft=-100000\nside=0\ntab=x",
       "left=-100000 top=2 width=3 height=4 maximised=0 side=0 tab=0 "},
      {"left=1\nside=-1\nmaximised=2", "maximised=0 "},
      {"left=100001\nheight=4\nmaximised=1", "maximised=1 "},
      {"left=\nheight=4\nroom=0\nchannels=1", "maximised=0 channels=1 "},
  };
  for (const auto& [stored, read] : cases) {
    files.files[paths.settings] = "[window]\ntop=2\nwidth=3\n" + stored;
    std::vector<Setting> settings;
    AppendWindowPlace(Load().window, settings);
    std::string kept;
    for (const Setting& setting : settings) kept += setting.key + "=" + setting.value + " ";
    EXPECT_EQ(kept, read) << stored;
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
