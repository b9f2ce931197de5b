#include "mail/list_loader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <numeric>
#include <random>
#ifndef _WIN32
#include <sys/resource.h>
#include <unistd.h>
#endif

#include "base/encoding.h"
#include "base/letter_case.h"
#include "mail/title_search.h"
#include "support/mail_stage.h"
#include "support/memory.h"

namespace brindle {
namespace {

TEST(ListReader, ReadsHandleAndMails) {
  using namespace std::string_literals;
  const std::string eleven(11, '\n');
  const std::string utf8 = "\xEF\xBB\xBF";
  const std::string little = "\xFF\xFE";
  const std::string big = "\xFE\xFF";
  // What is read: "to handle; ", when one is named, and the mails.
  const std::pair<std::string, std::string> table[] = {
      {"12. Some Title Here\n(12) Some Title\n[3]   Title \n1.2 Title\n007 a  b\n5\n6 \n7  ",
       "12=Some Title Here|12=Some Title|3=Title|12=Title|007=a  b|5=|6=|7="},
      {"-4 x\n+4 y\n4- z\n1 tab\there", "-4=x|+4=y|1=tab\there"},
      {"1 a\r\n2 b\n3 c\r4 d\r\r\n5 e", "1=a|2=b|3=c|4=d|5=e"},
      {"1 a\0b\n\0\n"s, "1=a\0b"s},
      {"ballistic mail server : x\n5\tMy Title\n5 My Title\n 6 \ta\tb\t\n7\n",
       "5=My Title| 6 =a b|7="},
      {"1\ta Ballistic mail server : \n2 b", "2=b"},
      {"\n9 ballistic mail server : \n2\tb", "9=ballistic mail server :"},

      {"1 send x", "to ; 1=send x"},
      {"!handle SEND ", "to handle; "},
      {"!handle send", ""},
      {"send handle x\n!handle  send x", ""},
      {eleven + "!handle send 1", "to handle; "},
      {eleven + "\n!handle send 1", ""},
      {"!one send x\n send x", "to one; "},
      {"\x80handl\xE9 send x", "to handl\u00E9; "},

      // The encoding is decided for the whole file.
      {utf8 + "1 \xED\xA0\x80\u30AC\xA1\xA1\U0001F600\xF0\x9F",
       "1=\uFFFD\uFFFD\uFFFD\u30AC\uFFFD\uFFFD\U0001F600\uFFFD\uFFFD"},
      {"1 \u00E9\n2 ok", "1=\u00E9|2=ok"},
      {"1 \u00E9\n2 \x80", "1=\u00C3\u00A9|2=\u20AC"},
      {little + "1\0 \0\xE9\0\r\0\n\0002\0 \0\x3D\xD8\x00\xDE"s, "1=\u00E9|2=\U0001F600"},
      {big + "\0001\0 \xD8\x3D\0\n\0002\0 \xD8\x3D"s, "1=\uFFFD|2=\uFFFD"},
      {little + "1\0 \0x\0y"s, "1=x"},
  };
  for (const auto& [bytes, read] : table) {
    for (const size_t block : {1U, 7U, 4096U}) {
      MemorySource source(bytes, block);
      MailList list;
      ReadLimits limits;
      limits.block = block;
      const ReadResult result = ReadList(source, list, {}, limits);
      EXPECT_EQ((result.handle ? "to " + *result.handle + "; " : "") + RowsOf(list), read);
    }
  }
}

TEST(ListReader, ASearchFindsItsTitlesAndNothingElse) {
  const std::string bytes =
      "istanbul\n12. \u0130stanbul\r\n<b>istanbul\n(2) ISTANBUL   \r[istanbul 7]\n 3 x\n[3]   Lira "
      "12  "
      "\n5\n12";
  MemorySource source(bytes);
  MailList list;
  ReadList(source, list, {});
  const auto found = [&list](const char* text) {
    std::string rows;
    for (const std::uint32_t row : RowFilter(list, text).Next()) rows += std::to_string(row);
    return rows;
  };
  ASSERT_EQ(RowsOf(list), "12=\u0130stanbul|2=ISTANBUL|3=Lira 12|5=|12=");
  const std::pair<const char*, const char*> searches[] = {
      {"istanbul", "01"}, {"L", "012"}, {"12", "024"},    {"2", "12"},
      {"\n", ""},         {".", ""},    {"2istanbul", ""}};
  for (const auto& [wanted, rows] : searches) {
    EXPECT_EQ(found(wanted), rows) << wanted;
  }
  // What is read as Windows-1252 is not asked for odd characters.
  std::string every(256, '\0');
  std::iota(every.begin(), every.end(), '\0');
  EXPECT_EQ(FindOdd(Utf8FromWindows1252(every), 0), std::string::npos);
}

TEST(ListReader, BoundsTheLineAndPassesOverFailures) {
  ReadLimits limits{.block = 4, .longestLine = 8};
  MailList list;
  MemorySource source("1 abcdefghijk\r\n2 b\n!x\n34567890123456\n5 e");
  EXPECT_EQ(ReadList(source, list, {}, limits).status, ReadStatus::kComplete);
  EXPECT_EQ(RowsOf(list), "1=abcdef|2=b|34567890=|5=e");
  source.FailAfter(19);
  EXPECT_EQ(ReadList(source, list, {}, limits).status, ReadStatus::kFailed);
  EXPECT_EQ(RowsOf(list), "1=abcdef|2=b");
  limits.betweenCalls = 8;
  int calls = 0;
  MemorySource whole("1 a\n2 b\n3 c\n4 d\n5 e\n6 f\n");
  const auto twice = [&calls] { return ++calls < 2; };
  EXPECT_EQ(ReadList(whole, list, twice, limits).status, ReadStatus::kStopped);
  EXPECT_TRUE(calls == 2 && list.Size() < 6);
}

struct ListLoaderTest : testing::Test {
  ListLoaderTest() {
    std::filesystem::create_directory(folder_);
    ShowOld();
  }
  ~ListLoaderTest() override { std::filesystem::remove_all(folder_); }

  void ShowOld() {
    Fill(list_, "1=old|2=old", "x");
    stage_.server = "old";
  }
  std::string Write(std::u8string name, std::string_view bytes) const {
    const auto path = (folder_ / name).u8string();
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
    return {path.begin(), path.end()};
  }
  // A list of two parts.
  std::string WriteLarge() const {
    std::string large = "!old send x\n";
    while (large.size() < (size_t{17} << 20U)) large += "1 a title of the large list\n";
    return Write(u8"large.txt", large);
  }
  // What happens when the first part has been read.
  void Meanwhile(const std::function<void()>& action) {
    stage_.onEvents = [this, action] { stage_.onEvents = action; };
  }
  // What was shown meanwhile, and then the rows and the header.
  std::string Load(std::optional<std::string> path) {
    stage_.answer = std::move(path);
    loader_.mnuLoadListFile_Click();
    return stage_.Taken().substr(kAsked.size()) + ": " + RowsOf(list_) + " " + list_.TitleHeader();
  }

  const std::string kAsked =
      "? All List Files|*.txt;*.htm;*.html|Text Files (*.txt) |*.txt|Webpage Files (*.htm)|"
      "*.htm|Webpage Files (*.html)|*.html";
  const std::string kBusy = "; no buttons; wait; events; ";
  const std::filesystem::path folder_ = std::filesystem::temp_directory_path() /
                                        ("brindle_list_" + std::to_string(std::random_device()()));
  MailStage stage_;
  MailList list_;
  ListLoader loader_{stage_, stage_, stage_, list_};
};

TEST_F(ListLoaderTest, SaysWhatWasWrongAndBringsTheOldListBack) {
  using namespace std::string_literals;
  const std::tuple<const char8_t*, std::string, std::string, std::string> table[] = {
      {u8"li\u0161t \u20AC.txt", "!bot send x\n1 a\n", "to bot; ", "1=a Mail Title [0/1]"},
      {u8"b.txt",
       "\xFF\xFE"
       "1\0 \0a\0"s,
       "", "1=a Mail Title [0/1]"},
      {u8"a.txt", "", "'a.txt is empty.' undo; ", " Mail Title [0/0]"},
      {u8"a.zip", "1 PK\0\3"s, "'a.zip is not a text file.' undo; ", "1=PK\0\3 Mail Title [0/1]"s},
      {u8"a.htm", "<html>\n",
       "'a.htm holds no mails: none of its lines begins with a number.' undo; ",
       " Mail Title [0/0]"},
  };
  for (const auto& [name, bytes, told, rows] : table) {
    ShowOld();
    stage_.Taken();
    stage_.onEvents = [this] { EXPECT_EQ(RowsOf(list_), ""); };
    EXPECT_EQ(Load(Write(name, bytes)), kBusy + told + "list; buttons: " + rows);
    const std::string loaded = RowsOf(list_) + " " + stage_.server;
    loader_.Undo();
    EXPECT_EQ(RowsOf(list_) + " " + stage_.server,
              told.starts_with("'") ? "1=old|2=old old" : loaded);
  }
  // The file goes away in the meantime.
  stage_.Taken();
  stage_.onEvents = [this] { std::filesystem::remove_all(folder_); };
  EXPECT_EQ(Load(Write(u8"c", "1 a")),
            kBusy + "'c could not be opened.' undo; list; buttons:  Mail Title [0/0]");
}

TEST_F(ListLoaderTest, FromWebClearsTheListBelowItsHeader) {
  for (int twice = 0; twice < 2; ++twice) {
    loader_.mnuLoadListWeb_Click();
    EXPECT_EQ(RowsOf(list_) + list_.TitleHeader(), "Mail Title [0/2]");
    EXPECT_EQ(stage_.Taken(), "'From Web clears the list and fetches nothing.' undo");
  }
}

TEST_F(ListLoaderTest, RemembersWhatItLoaded) {
  MemoryFiles files;
  SettingsFile settings(files, "ini");
  RecentLists recent(settings);
  loader_.Remember(recent);
  std::vector<std::string> expected;
  for (const char8_t* name : {u8"a", u8"b", u8"c", u8"d", u8"e", u8"f", u8"g", u8"h", u8"i"}) {
    expected.insert(expected.begin(), Write(name, "1 a\n"));
    for (int twice = 0; twice < 2; ++twice) loader_.OpenFile(expected[0]);
    EXPECT_EQ(files.files["ini"].find("=\r\n"), std::string::npos);
  }
  expected.pop_back();
  EXPECT_EQ(loader_.Recent(), expected);
  // One from the middle comes first, an empty one is not kept, and one that is gone is forgotten.
  loader_.OpenFile(expected[3]);
  std::rotate(expected.begin(), expected.begin() + 3, expected.begin() + 4);
  loader_.OpenFile(Write(u8"empty.txt", ""));
  std::filesystem::remove(expected.back());
  stage_.Taken();
  Fill(list_, "1=old");
  loader_.OpenFile(expected.back());
  EXPECT_EQ(stage_.Taken() + RowsOf(list_), "'b could not be found.' undo1=old");
  expected.pop_back();
  EXPECT_EQ(loader_.Recent(), expected);
}

TEST_F(ListLoaderTest, DoesNothingWithoutAFile) {
  const std::string gone = Write(u8"a", "") + "x";
  const std::string folder = gone.substr(0, gone.rfind('/'));
  for (const std::optional<std::string>& path : std::vector<std::optional<std::string>>{
           std::nullopt, "   ", gone, folder, "/dev/zero", "\xFF\xFE", std::string(100000, 'x')}) {
    EXPECT_EQ(Load(path), ": 1=old|2=old Mail Title [1/2]");
  }
}

TEST_F(ListLoaderTest, TheListThatCameLaterWins) {
  const std::string path = WriteLarge();
  Meanwhile([this] { Fill(list_, "7=other"); });
  EXPECT_EQ(Load(path), kBusy + "events; list; buttons: 7=other Mail Title [0/1]");
  Meanwhile([this] { loader_.Stop(); });
  EXPECT_TRUE(Load(path).starts_with(kBusy + "events; to old; list; buttons"));
  Load(path);
  ASSERT_GT(list_.Size(), 600000U);
  for (size_t row = 0; row < list_.Size(); row += 1000) {
    EXPECT_EQ(list_.Title(row), "a title of the large list");
  }
}

#ifndef _WIN32  // where a file that is open stays as it is
TEST_F(ListLoaderTest, AFileThatChangesIsReadAsItWasOrToldToBeCut) {
  std::string path = WriteLarge();
  Meanwhile([&] { std::filesystem::resize_file(path, size_t{16} << 20U); });
  EXPECT_NE(Load(path).find("; 'large.txt could not be read to its end.' undo; "),
            std::string::npos);
  loader_.Undo();
  EXPECT_EQ(RowsOf(list_), "1=old|2=old");
  path = WriteLarge();
  Meanwhile([&] { std::ofstream(path, std::ios::app) << "2 more\n"; });
  Load(path);
  const size_t lines = list_.Size();
  EXPECT_EQ(list_.Title(lines - 1), "more");
  Meanwhile([&] { std::filesystem::rename(Write(u8"new", "7 new\n"), path); });
  Load(path);
  EXPECT_EQ(list_.Size(), lines);
}

#ifndef __SANITIZE_ADDRESS__  // which ends the program where memory runs out
TEST_F(ListLoaderTest, AListThatIsTooLargeForTheMemoryIsTold) {
  const std::string path = WriteLarge();
  const auto loadWithLittleMemory = [&] {
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t bytes = static_cast<rlim_t>(pages) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
    const rlimit little = {bytes + (size_t{8} << 20U), RLIM_INFINITY};
    const bool limited = setrlimit(RLIMIT_AS, &little) == 0;
    loader_.OpenFile(path);
    const std::string told = stage_.Taken();
    loader_.Undo();
    const bool isTold =
        told.find("'large.txt is too large for the memory of this computer.'") != std::string::npos;
    _exit(limited && isTold && RowsOf(list_) == "1=old|2=old" ? 0 : 1);
  };
  EXPECT_EXIT(loadWithLittleMemory(), testing::ExitedWithCode(0), "");
}
#endif
#endif

}  // namespace
}  // namespace brindle
