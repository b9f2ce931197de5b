// The rooms for Windows against the system's own windows, menus and locks.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <future>
#include <thread>
#include <utility>

#include "aol/screen_name.h"
#include "platform/native.h"
#include "platform/single_instance.h"

namespace brindle {
namespace {

struct NoEvents : EventPump {
  void LetEventsRun(int) override {}
};

constexpr std::pair<const char*, int> kSignedOn[] = {
    {"_AOL_Static", 1}, {"_AOL_Glyph", 2}, {"RICHCNTLSTATIC", 2}, {"_AOL_Icon", 26}};

// The other program's windows, on a thread of their own, as its messages are answered there. They
// are made by the old functions, with texts in the code page.
class OtherProgram {
 public:
  OtherProgram() : thread_([this] { Run(); }) { made_.get_future().wait(); }
  ~OtherProgram() {
    PostMessageA(frame_, WM_CLOSE, 0, 0);
    ends_.set_value();
    thread_.join();
  }
  // From now on it answers no message.
  void Hang() {
    PostMessageA(frame_, WM_APP, 0, 0);
    hangs_.get_future().wait();
  }

 private:
  static HWND Make(const char* className, const char* caption, HWND parent) {
    WNDCLASSA description{};
    description.lpfnWndProc = DefWindowProcA;
    description.lpszClassName = className;
    RegisterClassA(&description);
    const DWORD style = parent == nullptr ? WS_OVERLAPPEDWINDOW : WS_CHILD;
    return CreateWindowExA(0, className, caption, style, 0, 0, 50, 50, parent, nullptr, nullptr,
                           nullptr);
  }

  void Run() {
    frame_ = Make("AOL Frame25", "America Online", nullptr);
    const HWND area = Make("MDIClient", "", frame_);
    // The last made is the first found.
    const HWND welcome = Make("AOL Child", "Welcome, Ren\xE9 D!", area);
    for (const auto& [className, count] : kSignedOn) {
      for (int i = 0; i < count; ++i) Make(className, "", welcome);
    }
    Make("AOL Child", "Welcome, Nobody!", area);
    Make("AOL Child", "Buddy List", area);
    made_.set_value();
    for (MSG message; GetMessageA(&message, nullptr, 0, 0) > 0 && message.message != WM_CLOSE;) {
      if (message.message == WM_APP) {
        hangs_.set_value();
        ends_.get_future().wait();
        break;
      }
      DispatchMessageA(&message);
    }
    DestroyWindow(frame_);
  }

  HWND frame_ = nullptr;
  std::promise<void> made_, hangs_, ends_;
  std::thread thread_;
};

TEST(WindowsRooms, TheScreenNameIsFoundInRealWindows) {
  NoEvents events;
  const std::unique_ptr<WindowTree> windows = NativeWindowTree();
  AolClient aol(*windows, events);
  EXPECT_EQ(aol.GetAolScreenName(), "");
  OtherProgram program;
  EXPECT_EQ(aol.GetAolScreenName(), "Ren\u00E9 D");
  const WindowTree::Window buddies = aol.FindAolChild("Buddy List");
  EXPECT_EQ(aol.GetWindowCaption(buddies), "Buddy List");
  EXPECT_EQ(aol.FindAolChild("Welcome"), 0U);
  program.Hang();
  const ULONGLONG begun = GetTickCount64();
  EXPECT_EQ(aol.GetWindowCaption(buddies), "");
  EXPECT_LT(GetTickCount64() - begun, 5000U);
}

TEST(WindowsRooms, TheSizeCommandLeavesTheSystemMenu) {
  const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 9, 9, nullptr,
                                      nullptr, nullptr, nullptr);
  const auto has = [&](UINT command) {
    return GetMenuState(GetSystemMenu(window, FALSE), command, MF_BYCOMMAND) != UINT(-1);
  };
  EXPECT_TRUE(has(SC_SIZE));
  RemoveSizeCommand(reinterpret_cast<std::uintptr_t>(window));
  EXPECT_FALSE(has(SC_SIZE));
  EXPECT_TRUE(has(SC_MOVE) && has(SC_CLOSE) && has(SC_MAXIMIZE));
  RemoveSizeCommand(0);
  DestroyWindow(window);
}

TEST(WindowsRooms, OneProgramHoldsAFolderWhateverItIsCalled) {
  namespace fs = std::filesystem;
  const fs::path base =
      fs::temp_directory_path() / (L"brindle-" + std::to_wstring(GetCurrentProcessId()));
  const std::u8string name = u8"gr\u00FC\u00DFe \u65E5\u672C";
  std::string folder = base.string();
  std::wstring made = LR"(\\?\)" + base.wstring();
  CreateDirectoryW(made.c_str(), nullptr);
  // The second time far beyond 260 characters.
  for (const int levels : {1, 6}) {
    for (int i = 0; i < levels; ++i) {
      const std::u8string part = name + std::u8string(50, u8'x');
      folder += "/" + std::string(part.begin(), part.end());
      made += L"\\" + fs::path(part).wstring();
      CreateDirectoryW(made.c_str(), nullptr);
    }
    const std::wstring file = made + L"\\brindle.lock";
    {
      const SingleInstance first(folder);
      EXPECT_FALSE(first.IsAnotherRunning());
      EXPECT_NE(GetFileAttributesW(file.c_str()), INVALID_FILE_ATTRIBUTES) << levels;
      EXPECT_TRUE(SingleInstance(folder).IsAnotherRunning());
    }
    EXPECT_EQ(GetFileAttributesW(file.c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_FALSE(SingleInstance(folder).IsAnotherRunning());
  }
  EXPECT_FALSE(SingleInstance(folder + "/missing").IsAnotherRunning());
  for (; made.size() > base.wstring().size(); made.resize(made.rfind(L'\\'))) {
    RemoveDirectoryW(made.c_str());
  }
}

}  // namespace
}  // namespace brindle
