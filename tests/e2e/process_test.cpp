// The program as a process of its own, where processes get signals: how it ends, its command line,
// its folder and the lock on that.
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <csignal>

#include "meeting.h"
#include "support/child_process.h"

namespace brindle::test {
namespace {

struct ProcessTest : testing::Test {
  // Without a display, or on one that nobody sees and that is not small enough to be told about.
  void Start(const QStringList& arguments, const char* platform,
             const QString& program = BRINDLE_PROGRAM) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"}) environment.remove(name);
    environment.insert("QT_QPA_PLATFORM", platform);
    environment.insert("XDG_CONFIG_HOME", folder_.File("user"));
    process_.setProcessEnvironment(environment);
    process_.start(program, arguments);
    ASSERT_TRUE(process_.waitForStarted());
  }
  // The exit code; -1 when it crashed or did not end.
  int ExitCode() {
    const bool ended = process_.waitForFinished(kTimeoutMs);
    return ended && process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
  }
  // True once a signal ends the process as a click does, which is when its window is open.
  bool IsOpen() const {
    return WaitUntil(
        [this] {
          QFile status(QString("/proc/%1/status").arg(process_.processId()));
          const QByteArray all = status.open(QIODevice::ReadOnly) ? status.readAll() : "";
          const QByteArray caught = all.mid(all.indexOf("SigCgt:") + 7).trimmed().left(16);
          return ((caught.toULongLong(nullptr, 16) >> (SIGTERM - 1)) & 1) == 1;
        },
        kTimeoutMs);
  }
  // The files in a folder below that of the test.
  QString Files(const char* below) const {
    return QDir(folder_.File(below)).entryList(QDir::Files | QDir::Hidden).join(' ');
  }

  DataFolder folder_;
  QProcess process_;
};

TEST_F(ProcessTest, AnswersTheCommandLine) {
  // The last one is said on the one stream or the other, by the code.
  const std::tuple<QStringList, const char*, int, const char*> table[] = {
      {{"--data-dir", "x", "-h"}, "none", 0, "Usage: brindle [--data-dir DIR] [ADDRESS | LIST]\n"},
      {{"--version"}, "none", 0, "Brindle v0.5.85\n"},
      {{"--data-dir=x", "--data-dirs", "y"}, "none", 2, "Unknown option '--data-dirs'.\n"},
      {{"--data-dir", folder_.File("brindle.ini/x")}, "minimal", 1, "Cannot make the folder "},
  };
  for (const auto& [arguments, platform, code, said] : table) {
    Start(arguments, platform);
    EXPECT_EQ(ExitCode(), code) << arguments.join(' ').toStdString();
    const QByteArray output = process_.readAllStandardOutput();
    const QByteArray error = process_.readAllStandardError();
    EXPECT_TRUE((code == 0 ? output : error).contains(said)) << (output + error).data();
    EXPECT_TRUE((code == 0 ? error : output).isEmpty()) << (output + error).data();
  }
}

TEST_F(ProcessTest, LocksItsFolderAndSavesAtASignal) {
  const QStringList arguments = {"--data-dir", folder_.File("new/folder")};
  for (const bool kill : {false, true}) {
    Start(arguments, "minimal");
    ASSERT_TRUE(IsOpen());
    const QString locked = Files("new/folder");
    EXPECT_TRUE(locked.contains("brindle.lock"));
    FakeDialogs refused;
    EXPECT_FALSE(Program(arguments[1].toStdString(), refused).Open());
    ASSERT_EQ(refused.notices.size(), 1U);
    EXPECT_EQ(refused.notices[0].text, "Brindle is already running.");
    EXPECT_EQ(Files("new/folder"), locked);
    // Without a chance to tidy up: what it leaves must not lock the user out.
    kill ? process_.kill() : process_.terminate();
    EXPECT_EQ(ExitCode(), kill ? -1 : 0);
    EXPECT_EQ(Files("new/folder"), kill ? "brindle.ini brindle.lock channels.txt irc_servers.txt"
                                        : "brindle.ini channels.txt irc_servers.txt");
  }
  FakeDialogs welcome;
  EXPECT_TRUE(Program(arguments[1].toStdString(), welcome).Open());
}

TEST_F(ProcessTest, FollowsAnAddressInTheProgramThatRuns) {
  ScriptedServer server;
  const QString address = QString("irc://127.0.0.1:%1/%2").arg(server.Port()).arg("mail");
  folder_.Write("brindle.ini", "[nicks]\r\npreferred=Wanda\r\n");
  // Left behind long ago by a process that was killed: nothing to be followed.
  folder_.Write("brindle-1.start", address.toStdString() + "-not");
  QFile left(folder_.File("brindle-1.start"));
  ASSERT_TRUE(left.open(QIODevice::ReadWrite));
  left.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFile::FileModificationTime);
  Start({"--data-dir", folder_.Path()}, "minimal");
  ASSERT_TRUE(IsOpen());
  QProcess second;
  second.setProcessEnvironment(process_.processEnvironment());
  second.start(BRINDLE_PROGRAM, {"--data-dir", folder_.Path(), address});
  ASSERT_TRUE(second.waitForFinished(kTimeoutMs));
  EXPECT_EQ(second.exitCode(), 0);
  EXPECT_EQ(server.TakeReceivedUpTo("_0.5.85\r\n"),
            "NICK Wanda\r\nUSER plenty of excellent qel_0.5.85\r\n");
  EXPECT_EQ(Files(".").count(".start"), 0);
  server.Send(":s 001 Wanda :hi\r\n");
  EXPECT_EQ(server.TakeReceivedUpTo("JOIN #mail\r\n"), "JOIN #mail\r\n");
  process_.terminate();
  EXPECT_EQ(ExitCode(), 0);
}

TEST_F(ProcessTest, KeepsItsFilesBesideItselfOrInTheUsersFolder) {
  const QString program = folder_.File("program/brindle");
  ASSERT_TRUE(QDir(folder_.Path()).mkpath("program") && QDir(folder_.Path()).mkpath("user"));
  ASSERT_TRUE(QFile::copy(BRINDLE_PROGRAM, program));
  for (const char* open : {".", "user"}) ::chmod(qPrintable(folder_.File(open)), 0777);
  // Rights do not hold an administrator back: then it is somebody else's process.
  process_.setChildProcessModifier([] {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && setuid(kNobody) != 0) _exit(1);
    EndWithParent();
  });
  for (const bool writable : {false, true}) {
    ::chmod(qPrintable(folder_.File("program")), writable ? 0777 : 0555);
    Start({}, "minimal", program);
    ASSERT_TRUE(IsOpen()) << process_.readAllStandardError().toStdString();
    EXPECT_EQ(Files("program").contains("brindle.lock"), writable);
    EXPECT_EQ(Files("user/Brindle").contains("brindle.lock"), !writable);
    process_.terminate();
    EXPECT_EQ(ExitCode(), 0);
  }
}

}  // namespace
}  // namespace brindle::test
