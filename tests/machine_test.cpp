// Lists that the machine cannot give, or that change while they are read.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "mail/list_loader.h"
#include "support/mail_stage.h"

namespace brindle {
namespace {

namespace fs = std::filesystem;

constexpr size_t kBetweenCalls = size_t{16} << 20U;
const std::string kLine = "1 a title of the large list\n";

struct Machine : testing::Test {
  Machine() {
    std::string pattern = testing::TempDir() + "brindle-lists-XXXXXX";
    folder = mkdtemp(pattern.data());
    path = folder + "/list.txt";
    Fill(list, "1=old|2=old", "x");
  }
  ~Machine() override { fs::remove_all(folder); }

  // A list of more than two parts.
  static void WriteList(const std::string& to) {
    std::ofstream file(to, std::ios::binary);
    for (size_t size = 0; size < 2 * kBetweenCalls + kLine.size(); size += kLine.size()) {
      file << kLine;
    }
  }
  // What is told; `meanwhile` happens when the first part has been read.
  std::string Load(const std::function<void()>& meanwhile = {}) {
    stage.onEvents = [&] { stage.onEvents = meanwhile; };
    stage.Taken();
    loader.OpenFile(path);
    stage.onEvents = {};
    const std::string taken = stage.Taken();
    const size_t begin = taken.find('\'');
    return begin == std::string::npos ? "" : taken.substr(begin, taken.rfind('\'') - begin + 1);
  }
  bool UndoBringsTheOldListBack() {
    loader.Undo();
    return RowsOf(list) == "1=old|2=old" && list.CheckedCount() == 1;
  }

  std::string folder;
  std::string path;
  MailStage stage;
  MailList list;
  ListLoader loader{stage, stage, stage, list};
};

TEST_F(Machine, AFileThatChangesIsReadAsItWasOrToldToBeCut) {
  const auto write = [this] { WriteList(path); };
  write();
  const size_t lines = fs::file_size(path) / kLine.size();
  EXPECT_EQ(Load([this] { fs::resize_file(path, kBetweenCalls); }),
            "'list.txt could not be read to its end.'");
  EXPECT_TRUE(UndoBringsTheOldListBack());
  write();
  EXPECT_EQ(Load([this] { std::ofstream(path, std::ios::app) << "2 more\n"; }), "");
  EXPECT_EQ(list.Size(), lines + 1);
  write();
  EXPECT_EQ(Load([this] {
              std::ofstream(folder + "/new") << "7 new\n";
              fs::rename(folder + "/new", path);
            }),
            "");
  ASSERT_EQ(list.Size(), lines);
  EXPECT_EQ(list.Title(lines - 1), "a title of the large list");
}

#ifndef __SANITIZE_ADDRESS__  // which ends the program where memory runs out
TEST_F(Machine, AListThatIsTooLargeForTheMemoryIsTold) {
  std::ofstream(path) << "1 a\n";
  const auto loadWithLittleMemory = [this] {
    for (int i = 0; i < 3; ++i) {
      std::ofstream more(path, std::ios::app);
      for (int line = 0; line < 3'000'000; ++line) more << line << " t\n";
    }
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t bytes = static_cast<rlim_t>(pages) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
    const rlimit little = {bytes + (size_t{24} << 20U), RLIM_INFINITY};
    const bool limited = setrlimit(RLIMIT_AS, &little) == 0;
    const std::string told = Load();
    _exit(limited && told == "'list.txt is too large for the memory of this computer.'" &&
                  UndoBringsTheOldListBack()
              ? 0
              : 1);
  };
  EXPECT_EXIT(loadWithLittleMemory(), testing::ExitedWithCode(0), "");
}
#endif

}  // namespace
}  // namespace brindle
