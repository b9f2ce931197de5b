// The lock on a data folder, with real files. That it goes with a killed process is the process
// test's.

#include "platform/single_instance.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>

namespace brindle {
namespace {

namespace fs = std::filesystem;

TEST(SingleInstanceTest, OnlyALiveProcessKeepsOthersOut) {
  std::string folder = testing::TempDir() + "brindle-lock-XXXXXX";
  ASSERT_NE(mkdtemp(folder.data()), nullptr);
  const std::string path = folder + "/brindle.lock";
  const std::string leftBehind[] = {"", "not a number",
                                    std::to_string(getpid()) + "\nbrindle\nanother machine\n\n\n"};
  for (const std::string& content : leftBehind) {
    SCOPED_TRACE(content);
    std::ofstream(path) << content;
    auto first = std::make_unique<SingleInstance>(folder);
    EXPECT_FALSE(first->IsAnotherRunning());
    EXPECT_TRUE(SingleInstance(folder).IsAnotherRunning());
    EXPECT_TRUE(SingleInstance(folder).IsAnotherRunning());  // the one before took nothing away
    first.reset();
    EXPECT_FALSE(fs::exists(path));
    EXPECT_FALSE(SingleInstance(folder).IsAnotherRunning());
  }
  // The file was removed by hand: it is not ours that stands there now.
  auto first = std::make_unique<SingleInstance>(folder);
  fs::remove(path);
  const SingleInstance second(folder);
  EXPECT_FALSE(second.IsAnotherRunning());
  first.reset();
  EXPECT_TRUE(SingleInstance(folder).IsAnotherRunning());
  fs::remove_all(folder);
  EXPECT_FALSE(SingleInstance(folder).IsAnotherRunning());  // no folder, no lock
}

}  // namespace
}  // namespace brindle
