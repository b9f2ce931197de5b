// The program as a process of its own: its command line, and the lock on its folder.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include "app/program.h"
#include "support/data_folder.h"
#include "support/fake_dialogs.h"
#include "support/wait.h"

namespace brindle::test {
namespace {

constexpr int kTimeoutMs = 20000;
constexpr const char* kUsage = "Usage: brindle [--data-dir DIR]\n";

class ProcessTest : public testing::Test {
 protected:
  // Without a display, or on one that nobody sees.
  void Start(const QStringList& arguments, const char* platform) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
      environment.remove(name);
    }
    if (*platform != '\0') environment.insert("QT_QPA_PLATFORM", platform);
    process_.setProcessEnvironment(environment);
    process_.start(BRINDLE_PROGRAM, arguments);
    ASSERT_TRUE(process_.waitForStarted(kTimeoutMs));
  }
  // The exit code; -1 when it crashed or did not end.
  int ExitCode() {
    const bool ended = process_.waitForFinished(kTimeoutMs);
    return ended && process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
  }

  QProcess process_;
  DataFolder folder_;
};

TEST_F(ProcessTest, TheCommandLineIsAnsweredWithoutADisplay) {
  struct Case {
    QStringList arguments;
    int code;
    const char* output;
    const char* error;
  };
  const Case cases[] = {
      {{"--help"}, 0, kUsage, ""},
      {{"--data-dir", "x", "-h"}, 0, kUsage, ""},
      {{"--version"}, 0, "Brindle v0.5.85\n", ""},
      {{"--bogus"}, 2, "", "Unknown option '--bogus'.\n"},
      {{"--data-dir=x", "--data-dirs", "y"}, 2, "", "Unknown option '--data-dirs'.\n"},
  };
  for (const Case& one : cases) {
    Start(one.arguments, "");
    EXPECT_EQ(ExitCode(), one.code) << one.arguments.join(' ').toStdString();
    const std::string output = process_.readAllStandardOutput().toStdString();
    const std::string error = process_.readAllStandardError().toStdString();
    EXPECT_TRUE(output.starts_with(one.output)) << output;
    EXPECT_EQ(output.empty(), *one.output == '\0') << output;
    EXPECT_TRUE(error.starts_with(one.error)) << error;
    EXPECT_EQ(error.empty(), *one.error == '\0') << error;
  }
}

TEST_F(ProcessTest, WhatCannotBeMeantEndsIt) {
  folder_.Write("file", "");
  const std::pair<QStringList, int> cases[] = {
      {{"--data-dir"}, 2},
      {{"word"}, 2},
      {{"-x"}, 2},
      {{"--data-dir", folder_.File("file/below")}, 1},
  };
  for (const auto& [arguments, code] : cases) {
    Start(arguments, "offscreen");
    EXPECT_EQ(ExitCode(), code) << arguments.join(' ').toStdString();
    EXPECT_FALSE(process_.readAllStandardError().isEmpty());
  }
}

TEST_F(ProcessTest, TheFolderIsMadeAndLockedUntilTheProcessIsGone) {
  const QString folder = folder_.File("new/folder");
  Start({"--data-dir", folder}, "offscreen");
  const QFileInfo lock(folder + "/brindle.lock");
  ASSERT_TRUE(WaitUntil([&] { return QFileInfo(lock.filePath()).size() > 0; }, kTimeoutMs));
  const auto opens = [&folder](FakeDialogs& dialogs) {
    return Program(folder.toStdString(), dialogs).Open();
  };
  FakeDialogs refused;
  EXPECT_FALSE(opens(refused));
  EXPECT_EQ(refused.notices,
            (std::vector<FakeDialogs::Shown>{{Icon::kExclamation, "Brindle is already running."}}));
  // Without a chance to tidy up: what it leaves must not lock the user out.
  process_.kill();
  ASSERT_TRUE(process_.waitForFinished(kTimeoutMs));
  ASSERT_TRUE(QFileInfo::exists(lock.filePath()));
  FakeDialogs welcome;
  EXPECT_TRUE(opens(welcome));
}

}  // namespace
}  // namespace brindle::test
