#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <random>
#include <string>

#include "platform/native.h"

namespace brindle {
namespace {

namespace fs = std::filesystem;

// Any mixing of two contents shows: each is one letter, over several blocks.
std::string Content(int round) {
  return std::string(100000 + round, static_cast<char>('a' + round));
}

struct AtomicWrite : testing::Test {
  AtomicWrite() {
    std::string pattern = testing::TempDir() + "brindle-files-XXXXXX";
    folder = mkdtemp(pattern.data());
  }
  ~AtomicWrite() override { fs::remove_all(folder); }

  auto FilesInFolder() const { return std::distance(fs::directory_iterator(folder), {}); }
  std::string In(const std::string& name) const { return folder + "/" + name; }
  std::string Read(const std::string& name) const { return files.Read(In(name)).value_or("none"); }
  bool IsTorn() const {
    const std::string content = Read("file");
    return content != Content(content[0] - 'a');
  }
  // A process that saves over and over; a byte goes out before and after each time.
  pid_t StartSaver(int output) {
    const pid_t child = fork();
    for (int round = 0; child == 0; round = (round + 1) % 26) {
      const bool saved = write(output, "<", 1) == 1 && files.Replace(In("file"), Content(round));
      if (!saved || write(output, ">", 1) != 1) _exit(1);
    }
    return child;
  }

  std::string folder;
  NativeFiles files;
};

TEST_F(AtomicWrite, AFileIsWholeWhoeverIsKilledAndWhoeverElseWrites) {
  std::mt19937 random(20261121);
  int torn = 0;
  int killedWhileWriting = 0;
  for (int i = 0; i < 60; ++i) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t saver = StartSaver(ends[1]);
    close(ends[1]);
    int unfinished = 0;
    size_t left = 1 + random() % 20;  // the moment of the kill is what varies
    for (char byte = 0; read(ends[0], &byte, 1) == 1;) {
      unfinished += byte == '<' ? 1 : -1;
      if (left == 0) continue;  // said before it was killed
      torn += files.Replace(In("file"), Content(25)) && !IsTorn() ? 0 : 1;
      if (--left == 0) kill(saver, SIGKILL);
    }
    close(ends[0]);
    int status = 0;
    EXPECT_TRUE(waitpid(saver, &status, 0) == saver && WIFSIGNALED(status));
    torn += IsTorn() ? 1 : 0;
    killedWhileWriting += unfinished;
  }
  EXPECT_EQ(torn, 0);
  EXPECT_GT(killedWhileWriting, 0);  // otherwise the kills have proved nothing
}

TEST_F(AtomicWrite, AFullDiskKeepsTheOldFile) {
  ASSERT_TRUE(files.Replace(In("file"), "old"));
  // No file that this process writes gets longer than so many bytes.
  signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit few{4096, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &few);
  for (const size_t bytes : {100000U, 4097U}) {
    EXPECT_FALSE(files.Replace(In("file"), std::string(bytes, 'x'))) << bytes;
  }
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(Read("file"), "old");
  EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(AtomicWrite, ReplacesWhatMayBeReplacedAndLeavesNoTrace) {
  fs::create_directory(In("folder"));
  fs::create_symlink(In("folder/real"), In("link"));
  mkfifo(In("folder/pipe").c_str(), 0600);
  for (const char* name : {"folder/real", "readonly", "open"}) files.Replace(In(name), "old");
  chmod(In("readonly").c_str(), 0400);
  chmod(In("open").c_str(), 0666);
  const std::tuple<const char*, bool, const char*> cases[] = {
      {"new", true, "new"},       {"open", true, "new"},     {"link", true, "new"},
      {"readonly", false, "old"}, {"folder", false, "none"}, {"missing/under", false, "none"},
  };
  for (const auto& [name, replaced, content] : cases) {
    EXPECT_EQ(files.Replace(In(name), "new"), replaced) << name;
    EXPECT_EQ(Read(name), content) << name;
    EXPECT_EQ(files.FileExists(In(name)), *content != 'n' || replaced) << name;
    struct stat status {};
    EXPECT_EQ(stat(In(name).c_str(), &status) == 0 && (status.st_mode & 0777U) == 0600U, replaced);
  }
  EXPECT_TRUE(files.Replace(In("readonly"), "old"));  // nothing is to be changed there
  EXPECT_TRUE(fs::is_symlink(In("link")));
  EXPECT_EQ(Read("folder/real"), "new");
  EXPECT_EQ(Read("folder/pipe"), "none");  // and nobody waits for it to speak
  EXPECT_EQ(FilesInFolder(), 5);
  for (const char* name : {"open", "missing"}) EXPECT_TRUE(files.Remove(In(name))) << name;
  EXPECT_FALSE(files.Remove(In("folder")));
  EXPECT_TRUE(IsWritableFolder(folder));
  EXPECT_FALSE(IsWritableFolder(In("missing")));
  EXPECT_FALSE(IsWritableFolder("/proc"));  // even for an administrator, whom no mark stops
  EXPECT_EQ(FilesInFolder(), 4);
}

}  // namespace
}  // namespace brindle
