#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>

#include "platform/native.h"
#include "support/save_round.h"

namespace brindle {
namespace {

namespace fs = std::filesystem;

class AtomicWrite : public testing::Test {
 protected:
  AtomicWrite() {
    std::string pattern = testing::TempDir() + "brindle-files-XXXXXX";
    folder = mkdtemp(pattern.data());
    paths = PathsIn(folder);
  }
  ~AtomicWrite() override { fs::remove_all(folder); }

  size_t FilesInFolder() const {
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder), {}));
  }
  std::string In(const std::string& name) const { return folder + "/" + name; }

  std::string folder;
  DataPaths paths;
  NativeFiles files;
};

// A saving process; killed at the latest when this ends.
class Saver {
 public:
  Saver(const std::string& folder, int round) {
    int ends[2];
    if (pipe(ends) != 0) return;
    child_ = fork();
    if (child_ == 0) {
      dup2(ends[1], STDOUT_FILENO);
      execl(BRINDLE_SAVE_LOOP, BRINDLE_SAVE_LOOP, folder.c_str(), std::to_string(round).c_str(),
            nullptr);
      _exit(127);
    }
    close(ends[1]);
    output_ = ends[0];
  }
  ~Saver() {
    if (child_ > 0) Kill();
    close(output_);
  }

  // True once the first round is on the disk.
  bool WaitForFirstRound() const {
    pollfd waiting{output_, POLLIN, 0};
    char byte = 0;
    return poll(&waiting, 1, 10000) == 1 && read(output_, &byte, 1) == 1;
  }

  // True when it was the kill that ended the process.
  bool Kill() {
    int status = 0;
    kill(child_, SIGKILL);
    const bool ended = waitpid(child_, &status, 0) == child_;
    child_ = -1;
    return ended && WIFSIGNALED(status);
  }

 private:
  pid_t child_ = -1;
  int output_ = -1;
};

TEST_F(AtomicWrite, EveryFileIsWholeWheneverTheProgramIsKilled) {
  constexpr int kKills = 200;
  std::mt19937 random(20261121);
  std::uniform_int_distribution<int> microseconds(0, 6000);
  int killedWhileWriting = 0;
  for (int i = 0; i < kKills; ++i) {
    Saver saver(folder, i * 10000);
    ASSERT_TRUE(saver.WaitForFirstRound());
    // The moment of the kill is what varies; nothing is waited for.
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
    ASSERT_TRUE(saver.Kill());
    ASSERT_EQ(WrongWithSaved(files, paths), "") << "after kill " << i;
    const size_t left = FilesInFolder();
    ASSERT_LE(left, 5U);
    if (left > 4) ++killedWhileWriting;
  }
  // Otherwise the kills have proved nothing.
  EXPECT_GT(killedWhileWriting, 0);
  EXPECT_TRUE(SaveRound(files, paths, 1));
}

TEST_F(AtomicWrite, OnlyTheOwnerCanRead) {
  std::ofstream(paths.settings) << "old";
  chmod(paths.settings.c_str(), 0644);
  ASSERT_TRUE(files.Replace(paths.settings, "new"));
  ASSERT_TRUE(files.Replace(paths.finds, "new"));
  for (const std::string& path : {paths.settings, paths.finds}) {
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U) << path;
  }
  EXPECT_EQ(files.Read(paths.settings), "new");
}

TEST_F(AtomicWrite, AFullDiskKeepsTheOldFiles) {
  ASSERT_TRUE(SaveRound(files, paths, 7));
  const pid_t child = fork();
  if (child == 0) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit few = {4096, 4096};
    if (setrlimit(RLIMIT_FSIZE, &few) != 0) _exit(3);
    NativeFiles limited;
    const std::string tooMuch(100000, 'x');
    for (const std::string& path : {paths.settings, paths.channels, paths.servers, paths.finds}) {
      if (limited.Replace(path, tooMuch)) _exit(1);
    }
    _exit(SaveRound(limited, paths, 8) ? 2 : 0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(WrongWithSaved(files, paths), "");
  EXPECT_EQ(FilesInFolder(), 4U);
}

TEST_F(AtomicWrite, FailsWithoutATraceWhereNothingCanBeWritten) {
  ASSERT_TRUE(files.Replace(In("file"), "old"));
  EXPECT_FALSE(files.Replace(In("file/under"), "new"));
  EXPECT_FALSE(files.Replace(In("missing/under"), "new"));
  // A folder stands where the file or the one beside it should go.
  fs::create_directory(In("folder"));
  EXPECT_FALSE(files.Replace(In("folder"), "new"));
  EXPECT_EQ(FilesInFolder(), 2U);
  fs::create_directory(In("file.new"));
  EXPECT_FALSE(files.Replace(In("file"), "new"));
  EXPECT_EQ(files.Read(In("file")), "old");
  // A link laid beside the file leads nowhere else.
  fs::create_symlink(In("file"), In("other.new"));
  EXPECT_FALSE(files.Replace(In("other"), "new"));
  EXPECT_EQ(files.Read(In("file")), "old");
}

TEST_F(AtomicWrite, ReplacesBehindALinkAndKeepsTheLink) {
  fs::create_directory(In("real"));
  ASSERT_TRUE(files.Replace(In("real/file"), "old"));
  fs::create_symlink(In("real/file"), In("link"));
  EXPECT_TRUE(files.Replace(In("link"), "new"));
  EXPECT_TRUE(fs::is_symlink(In("link")));
  EXPECT_EQ(files.Read(In("real/file")), "new");
}

TEST_F(AtomicWrite, ReadsAndRemovesOnlyFiles) {
  EXPECT_EQ(files.Read(In("missing")), std::nullopt);
  EXPECT_EQ(files.Read(folder), std::nullopt);
  EXPECT_FALSE(files.FileExists(folder));
  EXPECT_FALSE(files.FileExists(""));
  EXPECT_TRUE(files.Remove(In("missing")));
  EXPECT_FALSE(files.Remove(folder));
  ASSERT_TRUE(files.Replace(In("file"), std::string(200000, 'x')));
  EXPECT_EQ(files.Read(In("file")), std::string(200000, 'x'));
  EXPECT_TRUE(files.FileExists(In("file")));
  EXPECT_TRUE(files.Remove(In("file")));
  EXPECT_FALSE(files.FileExists(In("file")));
  EXPECT_TRUE(IsWritableFolder(folder));
  EXPECT_FALSE(IsWritableFolder(In("missing")));
}

}  // namespace
}  // namespace brindle
