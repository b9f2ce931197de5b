// The screen name of the other program, found in windows of the system.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <gtest/gtest.h>

#include <future>
#include <thread>
#include <utility>

#include "aol/screen_name.h"
#include "platform/native.h"

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

}  // namespace
}  // namespace brindle
