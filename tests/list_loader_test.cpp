#include "mail/list_loader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/fake_dialogs.h"
#include "support/list_check.h"

namespace brindle {
namespace {

using Mails = std::vector<std::pair<std::string, std::string>>;

PlainList Read(std::string_view bytes) {
  EXPECT_EQ(WrongWithReading(bytes), "");
  MemorySource source(bytes);
  MailList list;
  const ReadResult result = ReadList(source, list, {});
  return PlainFrom(list, result);
}

TEST(ListReader, RecognisesMails) {
  const struct {
    std::string_view bytes;
    Mails mails;
  } table[] = {
      {"", {}},
      {"12. Some Title Here", {{"12", "Some Title Here"}}},
      {"(12) Some Title\n", {{"12", "Some Title"}}},
      {"[3]   Title ", {{"3", "Title"}}},
      {"1.2 Title", {{"12", "Title"}}},
      {"007 a  b", {{"007", "a  b"}}},
      {"5\n6 \n7  ", {{"5", ""}, {"6", ""}, {"7", ""}}},
      {"-4 x\n+4 y\n4- z", {{"-4", "x"}, {"+4", "y"}}},
      {"1 send x", {{"1", "send x"}}},
      {"\n\n<br>\n 1 indented\n() none\n1a no\n<b>2 no\n3\tno\n", {}},
      {"1 tab\there", {{"1", "tab\there"}}},
      {"1 a\r\n2 b\n3 c\r4 d\r\r\n5 e",
       {{"1", "a"}, {"2", "b"}, {"3", "c"}, {"4", "d"}, {"5", "e"}}},
      {std::string_view("1 a\0b\n\0\n", 8), {{"1", std::string("a\0b", 3)}}},
      {"ballistic mail server : x\n5\tMy Title\n5 My Title\n 6 \ta\tb\t\n7\n",
       {{"5", "My Title"}, {" 6 ", "a b"}, {"7", ""}}},
      {"1\ta Ballistic mail server : \n2 b", {{"2", "b"}}},
      {"\n9 ballistic mail server : \n2\tb", {{"9", "ballistic mail server :"}}},
  };
  for (const auto& row : table) EXPECT_EQ(Read(row.bytes).mails, row.mails) << row.bytes;
}

TEST(ListReader, FindsTheHandleInTheFirstTwelveLines) {
  const std::string eleven(11, '\n');
  const struct {
    std::string bytes;
    std::optional<std::string> handle;
  } table[] = {
      {"!handle send list", "handle"},
      {"!handle SEND ", "handle"},
      {"!handle send", std::nullopt},
      {"send handle x", std::nullopt},
      {"!handle  send x", std::nullopt},
      {"!one send x\n!two Send y\n", "two"},
      {eleven + "!handle send 1", "handle"},
      {eleven + "\n!handle send 1", std::nullopt},
      {"! send x", ""},
      {"!one send x\n send x", "one"},
      {"\u20AChandle send x", "handle"},
      {"\x80handl\xE9 send x", "handl\u00E9"},
      {"ballistic mail server : \n!handle send x", "handle"},
  };
  for (const auto& row : table) EXPECT_EQ(Read(row.bytes).handle, row.handle) << row.bytes;
}

TEST(ListReader, DecidesTheEncodingForTheWholeFile) {
  using std::string_literals::operator""s;
  const struct {
    std::string bytes;
    Mails mails;
  } table[] = {
      {"\xEF\xBB\xBF"
       "1 \u00E9",
       {{"1", "\u00E9"}}},
      {"\xEF\xBB\xBF"
       "1 \xFF!",
       {{"1", "\uFFFD!"}}},
      {"1 \u00E9\n2 ok", {{"1", "\u00E9"}, {"2", "ok"}}},
      {"1 \u00E9\n2 \x80", {{"1", "\u00C3\u00A9"}, {"2", "\u20AC"}}},
      {"1 cut \xE2\x82", {{"1", "cut \u00E2\u201A"}}},
      {"\xFF\xFE" + "1\0 \0\xE9\0\r\0\n\0"s + "2\0 \0\x3D\xD8\x00\xDE"s,
       {{"1", "\u00E9"}, {"2", "\U0001F600"}}},
      {"\xFE\xFF" + "\0001\0 \xD8\x3D\0\n\0002\0 \xD8\x3D"s, {{"1", "\uFFFD"}, {"2", "\uFFFD"}}},
      {"\xFF\xFE" + "1\0 \0x\0y"s, {{"1", "x"}}},
      {"\xFF\xFE", {}},
      {"\xEF\xBB", {}},
  };
  for (const auto& row : table) EXPECT_EQ(Read(row.bytes).mails, row.mails) << row.bytes;
}

TEST(ListReader, AgreesWithTheSlowReadingOnRandomFiles) {
  const std::vector<std::string> pieces = {"1",
                                           "27.",
                                           "(3)",
                                           "[4]",
                                           " ",
                                           " ",
                                           "\t",
                                           "\n",
                                           "\r\n",
                                           "\r",
                                           "text",
                                           "send",
                                           "!bot",
                                           "SEND ",
                                           "-",
                                           ".",
                                           "\xE9",
                                           "\x80",
                                           "\xC3",
                                           "\u00E9",
                                           "\u20AC",
                                           "\U0001F600",
                                           "\xEF\xBB\xBF",
                                           "\xFF\xFE",
                                           "\xFE\xFF",
                                           "ballistic mail server : ",
                                           std::string(1, '\0')};
  std::mt19937 random(3);
  size_t rows = 0;
  for (int round = 0; round < 4000; ++round) {
    // Rare pieces stay rare, or every file would be Windows-1252.
    const size_t choice = random() % 4 == 0 ? pieces.size() : 16;
    std::string bytes;
    if (random() % 4 == 0) bytes = pieces[22 + random() % 4];
    for (size_t left = random() % 60; left > 0; --left) bytes += pieces[random() % choice];
    ASSERT_EQ(WrongWithReading(bytes), "") << testing::PrintToString(bytes);
    rows += Read(bytes).mails.size();
  }
  EXPECT_GT(rows, 1000U);
}

TEST(ListReader, BoundsTheLineAndPassesOverFailures) {
  ReadLimits limits;
  limits.block = 4;
  limits.longestLine = 8;
  MailList list;
  MemorySource source("1 abcdefghijk\r\n2 b\n!x\n34567890123456\n5 e");
  EXPECT_EQ(ReadList(source, list, {}, limits).status, ReadStatus::kComplete);
  ASSERT_EQ(list.Size(), 4U);
  EXPECT_EQ(list.Title(0), "abcdef");
  EXPECT_EQ(list.Title(1), "b");
  EXPECT_EQ(list.Number(2), "34567890");
  EXPECT_EQ(list.Title(3), "e");

  source.FailAfter(19);
  EXPECT_EQ(ReadList(source, list, {}, limits).status, ReadStatus::kFailed);
  EXPECT_EQ(list.Size(), 2U);

  limits.betweenCalls = 8;
  int calls = 0;
  MemorySource whole("1 a\n2 b\n3 c\n4 d\n5 e\n6 f\n");
  const auto twice = [&calls] { return ++calls < 2; };
  EXPECT_EQ(ReadList(whole, list, twice, limits).status, ReadStatus::kStopped);
  EXPECT_EQ(calls, 2);
  EXPECT_LT(list.Size(), 6U);
}

class RecordingView : public ListView {
 public:
  void SetTitleHeader(const std::string& text) override { log += text + ";"; }
  void EnableListButtons(bool enabled) override { log += enabled ? "on;" : "off;"; }
  void ShowList(bool shown) override { log += shown ? "show;" : "hide;"; }
  void SetListServer(const std::string& handle) override { log += "to " + handle + ";"; }
  std::string log;
};

class ScriptedEvents : public EventPump {
 public:
  void LetEventsRun(int) override {
    ++calls;
    if (onRun) std::exchange(onRun, nullptr)();
  }
  std::function<void()> onRun;
  int calls = 0;
};

class ListLoaderTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = std::filesystem::temp_directory_path() /
              ("brindle_list_" + std::to_string(std::random_device()()));
    std::filesystem::create_directory(folder_);
    list.Append("1", "old");
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::string Write(std::string_view name, std::string_view bytes) const {
    const auto path = folder_ / std::filesystem::path(std::u8string(name.begin(), name.end()));
    std::ofstream(path, std::ios::binary) << bytes;
    const auto text = path.u8string();
    return std::string(text.begin(), text.end());
  }

  void Load(std::optional<std::string> path) {
    dialogs.fileAnswers.push_back(std::move(path));
    loader.mnuLoadListFile_Click();
  }

  std::filesystem::path folder_;
  FakeDialogs dialogs;
  ScriptedEvents events;
  RecordingView view;
  MailList list;
  ListLoader loader{dialogs, events, view, list};
};

TEST_F(ListLoaderTest, LoadsAFileAndShowsThatItIsBusy) {
  const std::string path = Write("li\u0161t \u20AC.txt", "!bot send x\n1 a\n2 b\n");
  list.SetChecked(0, true);
  events.onRun = [this] {
    EXPECT_EQ(view.log, "off;hide;");
    EXPECT_EQ(list.Size(), 0U);
  };
  Load(path);
  EXPECT_EQ(view.log, "off;hide;to bot;show;Mail Title [0/2];on;");
  EXPECT_EQ(events.calls, 1);
  EXPECT_EQ(list.Title(1), "b");
  EXPECT_EQ(dialogs.filters.at(0),
            "All List Files|*.txt;*.htm;*.html|Text Files (*.txt) |*.txt|Webpage Files (*.htm)|"
            "*.htm|Webpage Files (*.html)|*.html");

  view.log.clear();
  loader.mnuLoadListWeb_Click();
  EXPECT_EQ(list.Size(), 0U);
  EXPECT_EQ(view.log, "");

  Load(Write("empty.txt", ""));
  EXPECT_EQ(view.log, "off;hide;show;Mail Title [0/0];on;");
  EXPECT_TRUE(dialogs.notices.empty());
}

TEST_F(ListLoaderTest, DoesNothingWithoutAFile) {
  const auto folder = folder_.u8string();
  for (const std::optional<std::string>& path : std::vector<std::optional<std::string>>{
           std::nullopt, "", "   ", Write("a", "") + "x", std::string(folder.begin(), folder.end()),
           "/dev/zero", "\xFF\xFE", std::string(100000, 'x'), std::string("a\0b", 3)}) {
    Load(path);
    EXPECT_EQ(view.log, "");
    EXPECT_EQ(list.Size(), 1U);
  }
}

TEST_F(ListLoaderTest, ReenablesTheButtonsWhenTheFileIsGoneMeanwhile) {
  const std::string path = Write("list.txt", "1 a\n2 b\n");
  events.onRun = [this] { std::filesystem::remove_all(folder_); };
  Load(path);
  EXPECT_EQ(list.Size(), 0U);
  EXPECT_EQ(view.log, "off;hide;show;Mail Title [0/0];on;");
}

TEST_F(ListLoaderTest, TheListThatCameLaterWins) {
  std::string large = "!old send x\n";
  while (large.size() < (size_t{17} << 20U)) large += "1 a title of the large list\n";
  const std::string path = Write("large.txt", large);
  const std::string other = Write("other.txt", "7 other\n");
  const auto atSecondCall = [this](std::function<void()> action) {
    events.onRun = [this, action] { events.onRun = action; };
  };

  atSecondCall([this, other] { Load(other); });
  Load(path);
  ASSERT_EQ(list.Size(), 1U);
  EXPECT_EQ(list.Title(0), "other");
  EXPECT_EQ(view.log.find("to old;"), std::string::npos);
  EXPECT_TRUE(view.log.ends_with("show;Mail Title [0/1];on;"));

  atSecondCall([this] { loader.Stop(); });
  events.calls = 0;
  Load(path);
  EXPECT_EQ(events.calls, 2);
  EXPECT_TRUE(view.log.ends_with("on;"));

  Load(path);
  EXPECT_GT(list.Size(), 600000U);
}

TEST_F(ListLoaderTest, SurvivesOneEndlessLineAndAnyBytes) {
  constexpr size_t kLong = size_t{100} << 20U;
  Load(Write("line.txt", "1 " + std::string(kLong, 'x')));
  ASSERT_EQ(list.Size(), 1U);
  EXPECT_EQ(list.Title(0).size(), kLong);
  Load(Write("line.txt", std::string(kLong / 10, '\r')));
  EXPECT_EQ(list.Size(), 0U);
  std::string noise(size_t{1} << 22U, '\0');
  std::mt19937 random(4);
  for (char& c : noise) c = static_cast<char>(random());
  Load(Write("noise.htm", noise));
  EXPECT_EQ(WrongWithReading(std::string_view(noise).substr(0, 200000)), "");
}

}  // namespace
}  // namespace brindle
