#include "settings/stored_lists.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/memory_files.h"

namespace brindle {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

const std::string kHeader =
    "// PLEASE DO NOT TRY TO MODIFY THIS FILE DIRECTLY.\r\n"
    "// INSTEAD PLEASE USE THE ABILITY TO DO SO IN THE\r\n"
    "// PROGRAM. THANK YOU.\r\n"
    " \r\n";

class StoredLists : public testing::Test {
 protected:
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
      {"#caf\xE9\r\n#\u00E4\r\n", {"#caf\u00E9", "#\u00E4"}},
      {"\xFF\xFE#\0a\0\n\0#\0\xE4\0"s, {"#a", "#\u00E4"}},
      {"\xFE\xFF\0#\0b"s, {"#b"}},
      {"#a b\n#c\td\n", {"#a", "#c"}},
      {"", {}},
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
  EXPECT_TRUE(SaveServers(files, {{"host", 6667}, {"b", 40000}}, "g"));
  EXPECT_EQ(files.files["g"], kHeader + "host:6667\r\nb:40000\r\n");

  const std::vector<Find> finds = {{"two words", DayFromText("2026-11-21")}, {" \"q\" ", 0}};
  EXPECT_TRUE(SaveFinds(files, finds, "h"));
  EXPECT_EQ(files.files["h"],
            "[finds]\r\ncount=1\r\nitem0=two words\r\ndate0=2026-11-21\r\n"
            "item1=\" \"q\" \"\r\ndate1=1970-01-01\r\n");
  EXPECT_EQ(FindsFrom(files.files["h"]), finds);
  EXPECT_TRUE(SaveFinds(files, {}, "h"));
  EXPECT_EQ(files.files["h"], "[finds]\r\ncount=-1\r\n");
  EXPECT_EQ(FindsFrom(files.files["h"]), std::vector<Find>{});
}

TEST_F(StoredLists, AMissingFileIsNotAnUnreadableOne) {
  const auto results = [this] {
    return std::vector{LoadChannels(files, "f").result, LoadServers(files, "f").result,
                       LoadFinds(files, "f", 0, std::nullopt).result};
  };
  EXPECT_EQ(results(), std::vector(3, LoadResult::kMissing));
  files.files["f"] = "";
  EXPECT_EQ(results(), std::vector(3, LoadResult::kLoaded));
  files.unreadable = {"f"};
  EXPECT_EQ(results(), std::vector(3, LoadResult::kUnreadable));
}

TEST_F(StoredLists, FindsFollowTheirCountAndTheirAge) {
  EXPECT_EQ(FindsFrom("[finds]\n"), (std::vector<Find>{{"", 0}}));
  EXPECT_EQ(FindsFrom("[finds]\ncount=x\nitem0=a\nitem1=b\n"), (std::vector<Find>{{"a", 0}}));
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
  EXPECT_EQ(texts(std::nullopt), (Texts{"today", "yesterday", "tomorrow", "undated"}));
  EXPECT_EQ(texts(1), (Texts{"today", "tomorrow"}));
  EXPECT_EQ(texts(2), (Texts{"today", "yesterday", "tomorrow"}));
}

TEST_F(StoredLists, DatesAreIsoOrNothing) {
  const std::pair<const char*, DayNumber> cases[] = {
      {"1970-01-01", 0}, {"1970-01-02", 1}, {"1969-12-31", -1}, {"2024-02-29", 19782},
      {"2023-02-29", 0}, {"2026-13-01", 0}, {"21.11.2026", 0},  {"2026-11-21 ", 0},
      {"26-11-21", 0},   {"", 0},           {"2026-1-2", 0},    {"-026-11-21", 0},
  };
  for (const auto& [text, day] : cases) EXPECT_EQ(DayFromText(text), day) << text;
  EXPECT_EQ(DayText(-719162) + DayText(19782), "0001-01-012024-02-29");
  std::tm moment{};
  moment.tm_year = 126;
  moment.tm_mon = 10;
  moment.tm_mday = 21;
  moment.tm_hour = 23;
  EXPECT_EQ(DayText(DayOf(moment)), "2026-11-21");
}

}  // namespace
}  // namespace brindle
