// The program's window as Windows has it, and the program as a process: its folder, its lock, and
// how it is asked to end.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDir>
#include <QProcess>

#include "support/wait.h"
#include "support/window_driver.h"

namespace brindle::test {
namespace {

TEST(WindowsProgram, TheWindowStaysOnTopAsAskedAndHasNoSizeCommand) {
  const auto folder = std::make_shared<DataFolder>();
  folder->Write("brindle.ini", "[misc options]\r\nMake window stay on top=1\r\n");
  WindowDriver driver(folder);
  const auto window = [&] { return reinterpret_cast<HWND>(driver.App().Window().winId()); };
  const auto isTopmost = [&] {
    return (GetWindowLongPtrW(window(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
  };
  const auto has = [&](UINT command) {
    return GetMenuState(GetSystemMenu(window(), FALSE), command, MF_BYCOMMAND) != UINT(-1);
  };
  EXPECT_TRUE(isTopmost());
  EXPECT_TRUE(has(SC_MOVE) && !has(SC_SIZE));
  driver.ShowTab(Tab::kOptions);
  for (const bool topmost : {false, true}) {
    driver.Find<QCheckBox>("chkOptionsMisc_4").setChecked(topmost);
    EXPECT_TRUE(WaitUntil([&] { return isTopmost() == topmost; }));
    EXPECT_TRUE(has(SC_MOVE) && !has(SC_SIZE));
    EXPECT_TRUE(IsWindowVisible(window()));
  }
}

// The visible window of a process with that caption.
HWND WindowOf(qint64 process, const std::wstring& caption) {
  struct Search {
    DWORD process;
    const std::wstring& caption;
    HWND found = nullptr;
  } search{static_cast<DWORD>(process), caption};
  EnumWindows(
      [](HWND window, LPARAM argument) -> BOOL {
        auto& looked = *reinterpret_cast<Search*>(argument);
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        wchar_t text[200] = L"";
        GetWindowTextW(window, text, 200);
        if (owner != looked.process || text != looked.caption || IsWindowVisible(window) == 0)
          return TRUE;
        looked.found = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&search));
  return search.found;
}

struct WindowsProcess : testing::Test {
  // Waits for the window.
  HWND Start(QProcess& process, const QStringList& arguments, const std::wstring& caption) {
    process.start(BRINDLE_PROGRAM, arguments);
    EXPECT_TRUE(process.waitForStarted());
    HWND window = nullptr;
    WaitUntil([&] { return (window = WindowOf(process.processId(), caption)) != nullptr; }, 30000);
    EXPECT_NE(window, nullptr);
    return window;
  }
  static int ExitCode(QProcess& process) {
    return process.waitForFinished(kTimeoutMs) ? process.exitCode() : -1;
  }
  QString Files() const { return QDir(Folder()).entryList(QDir::Files | QDir::Hidden).join(' '); }
  QString Folder() const { return folder_.File("gr\u00FC\u00DFe \u65E5/\u672C"); }

  const DataFolder folder_;
  const QStringList arguments_ = {"--data-dir", Folder()};
  const QString saved_ = "brindle.ini channels.txt irc_servers.txt";
  const std::wstring caption_ = L"Brindle v0.5.85";
};

TEST_F(WindowsProcess, LocksItsFolderAndSavesHoweverItIsAskedToEnd) {
  for (const char* end : {"close", "end of the session", "kill"}) {
    SCOPED_TRACE(end);
    QProcess first;
    const HWND window = Start(first, arguments_, caption_);
    ASSERT_TRUE(Files().contains("brindle.lock"));
    QProcess second;
    // Its box; it ends with that.
    PostMessageW(Start(second, arguments_, L"Brindle"), WM_CLOSE, 0, 0);
    EXPECT_EQ(ExitCode(second), 1);
    switch (*end) {
      case 'c':
        PostMessageW(window, WM_CLOSE, 0, 0);
        break;
      case 'e':
        EXPECT_NE(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), 0);
        SendMessageW(window, WM_ENDSESSION, TRUE, 0);
        EXPECT_TRUE(WaitUntil([&] { return Files().startsWith(saved_); }));
        first.kill();
        break;
      default:
        first.kill();
    }
    ExitCode(first);
    const bool isKilled = *end == 'k';
    const bool ended = first.exitStatus() == QProcess::NormalExit && first.exitCode() == 0;
    // At the end of a session it may end by itself before it is killed.
    EXPECT_TRUE(*end == 'e' || ended != isKilled);
    EXPECT_EQ(Files().toStdString(), (isKilled ? saved_.mid(12) : saved_).toStdString());
    for (const QString& name : saved_.split(' ')) QFile::remove(Folder() + "/" + name);
  }
}

TEST_F(WindowsProcess, AnswersTheCommandLine) {
  const std::tuple<QStringList, int, const char*> table[] = {
      {{"--version"}, 0, "Brindle v0.5.85"},
      {{"--data-dirs", "y"}, 2, "Unknown option '--data-dirs'."},
  };
  for (const auto& [arguments, code, said] : table) {
    QProcess process;
    process.start(BRINDLE_PROGRAM, arguments);
    EXPECT_EQ(ExitCode(process), code);
    const QByteArray all = process.readAllStandardOutput() + process.readAllStandardError();
    EXPECT_TRUE(all.contains(said)) << all.data();
  }
}

}  // namespace
}  // namespace brindle::test
