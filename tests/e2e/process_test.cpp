// The program as a process of its own: its command line, its folder, the lock on it, and its end.
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QProcess>
#include <csignal>

#include "meeting.h"
#include "support/child_process.h"

namespace brindle::test {
namespace {

constexpr int kTimeoutMs = 20000;
constexpr const char* kUsage = "Usage: brindle [--data-dir DIR]\n";

class ProcessTest : public testing::Test {
 protected:
  // Without a display, or on one that nobody sees and that is not small enough to be told about.
  void Start(const QStringList& arguments, const char* platform,
             const QString& program = BRINDLE_PROGRAM) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
      environment.remove(name);
    }
    if (*platform != '\0') environment.insert("QT_QPA_PLATFORM", platform);
    environment.insert("XDG_CONFIG_HOME", folder_.File("user"));
    process_.setProcessEnvironment(environment);
    process_.start(program, arguments);
    ASSERT_TRUE(process_.waitForStarted(kTimeoutMs));
  }
  // The exit code; -1 when it crashed or did not end.
  int ExitCode() {
    const bool ended = process_.waitForFinished(kTimeoutMs);
    return ended && process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
  }
  // True once the process ends by SIGTERM as by a click, which it does when its window is open.
  bool TakesTheSignal() const {
    return WaitUntil(
        [this] {
          QFile status(QString("/proc/%1/status").arg(process_.processId()));
          if (!status.open(QIODevice::ReadOnly)) return false;
          const QByteArray all = status.readAll();
          const auto mask = all.mid(all.indexOf("SigCgt:") + 7).trimmed().left(16);
          return ((mask.toULongLong(nullptr, 16) >> (SIGTERM - 1)) & 1) == 1;
        },
        kTimeoutMs);
  }

  DataFolder folder_;
  QProcess process_;
};

TEST_F(ProcessTest, AnswersTheCommandLine) {
  folder_.Write("file", "");
  const struct {
    QStringList arguments;
    const char* platform;
    int code;
    const char* output;  // begins with this
    const char* error;   // holds this
  } table[] = {
      {{"--help"}, "", 0, kUsage, ""},
      {{"--data-dir", "x", "-h"}, "", 0, kUsage, ""},
      {{"--version"}, "", 0, "Brindle v0.5.85\n", ""},
      {{"--bogus"}, "", 2, "", "Unknown option '--bogus'.\n"},
      {{"--data-dir=x", "--data-dirs", "y"}, "", 2, "", "Unknown option '--data-dirs'.\n"},
      {{"--data-dir"}, "minimal", 2, "", kUsage},
      {{"word"}, "minimal", 2, "", kUsage},
      {{"--data-dir", folder_.File("file/below")}, "minimal", 1, "", "Cannot make the folder "},
  };
  for (const auto& row : table) {
    Start(row.arguments, row.platform);
    EXPECT_EQ(ExitCode(), row.code) << row.arguments.join(' ').toStdString();
    const std::string output = process_.readAllStandardOutput().toStdString();
    const std::string error = process_.readAllStandardError().toStdString();
    EXPECT_TRUE(output.starts_with(row.output)) << output;
    EXPECT_EQ(output.empty(), *row.output == '\0') << output;
    EXPECT_NE(error.find(row.error), std::string::npos) << error;
    EXPECT_EQ(error.empty(), row.code == 0) << error;
  }
}

TEST_F(ProcessTest, LocksItsFolderAndSavesAtASignal) {
  const QString folder = folder_.File("new/folder");
  Start({"--data-dir", folder}, "minimal");
  ASSERT_TRUE(TakesTheSignal());
  const auto files = [&] { return QDir(folder).entryList(QDir::Files | QDir::Hidden).join(' '); };
  const QString locked = files();
  EXPECT_TRUE(locked.contains("brindle.lock"));
  const auto opens = [&](FakeDialogs& dialogs) {
    return Program(folder.toStdString(), dialogs).Open();
  };
  FakeDialogs refused;
  EXPECT_FALSE(opens(refused));
  EXPECT_EQ(refused.notices,
            (std::vector<FakeDialogs::Shown>{{Icon::kExclamation, "Brindle is already running."}}));
  EXPECT_EQ(files(), locked);
  process_.terminate();
  EXPECT_EQ(ExitCode(), 0);
  EXPECT_EQ(files(), "brindle.ini channels.txt irc_servers.txt");
  // Without a chance to tidy up: what it leaves must not lock the user out.
  Start({"--data-dir", folder}, "minimal");
  ASSERT_TRUE(TakesTheSignal());
  process_.kill();
  ASSERT_TRUE(process_.waitForFinished(kTimeoutMs));
  EXPECT_TRUE(files().contains("brindle.lock"));
  FakeDialogs welcome;
  EXPECT_TRUE(opens(welcome));
}

TEST_F(ProcessTest, KeepsItsFilesBesideItselfOrInTheUsersFolder) {
  const QString program = folder_.File("program/brindle");
  ASSERT_TRUE(QDir(folder_.Path()).mkpath("program") && QDir(folder_.Path()).mkpath("user"));
  ASSERT_TRUE(QFile::copy(BRINDLE_PROGRAM, program));
  const auto isLocked = [this](const char* where) { return QFile::exists(folder_.File(where)); };
  Start({}, "minimal", program);
  ASSERT_TRUE(TakesTheSignal());
  EXPECT_TRUE(isLocked("program/brindle.lock"));
  process_.kill();
  process_.waitForFinished(kTimeoutMs);

  // Rights do not hold an administrator back: then it is somebody else's process.
  ASSERT_TRUE(QFile::remove(folder_.File("program/brindle.lock")));
  for (const char* open : {".", "user"}) ::chmod(qPrintable(folder_.File(open)), 0777);
  ::chmod(qPrintable(folder_.File("program")), 0555);
  process_.setChildProcessModifier([] {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && setuid(kNobody) != 0) _exit(1);
    EndWithParent();
  });
  Start({}, "minimal", program);
  ASSERT_TRUE(TakesTheSignal()) << process_.readAllStandardError().toStdString();
  EXPECT_TRUE(isLocked("user/Brindle/brindle.lock"));
  EXPECT_FALSE(isLocked("program/brindle.lock"));
  process_.terminate();
  EXPECT_EQ(ExitCode(), 0);
  ::chmod(qPrintable(folder_.File("program")), 0755);
}

}  // namespace
}  // namespace brindle::test
