#define NOMINMAX
#include <windows.h>

#include "platform/native.h"

namespace brindle {
namespace {

// A window that does not answer must not freeze ours.
constexpr UINT kPatienceMilliseconds = 500;

// Far longer than any caption: a program that claims more is not believed.
constexpr LRESULT kLongestCaption = 4096;

// What texts are in on this side; the code page of our own process may be another.
constexpr UINT kWindows1252 = 1252;

HWND Handle(WindowTree::Window window) { return reinterpret_cast<HWND>(window); }

WindowTree::Window Number(HWND window) { return reinterpret_cast<WindowTree::Window>(window); }

std::wstring Wide(const std::string& text) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  const int size = MultiByteToWideChar(kWindows1252, 0, text.data(), length, wide.data(), length);
  wide.resize(static_cast<size_t>(size));
  return wide;
}

std::string Narrow(const std::wstring& wide) {
  const int length = static_cast<int>(wide.size());
  std::string text(wide.size(), '\0');
  const int size = WideCharToMultiByte(kWindows1252, 0, wide.data(), length, text.data(), length,
                                       nullptr, nullptr);
  text.resize(static_cast<size_t>(size));
  return text;
}

// The answer to a message; 0 when none comes.
LRESULT Ask(WindowTree::Window window, UINT message, WPARAM number, LPARAM text) {
  DWORD_PTR answer = 0;
  const LRESULT asked = SendMessageTimeoutW(Handle(window), message, number, text, SMTO_ABORTIFHUNG,
                                            kPatienceMilliseconds, &answer);
  return asked == 0 ? 0 : static_cast<LRESULT>(answer);
}

class Win32Windows : public WindowTree {
 public:
  Window FindTopLevel(const std::string& className) override {
    return Number(FindWindowW(Wide(className).c_str(), nullptr));
  }

  Window FindChild(Window parent, Window after, const std::string& className,
                   const std::optional<std::string>& title) override {
    const std::wstring wideTitle = Wide(title.value_or(""));
    return Number(FindWindowExW(Handle(parent), Handle(after), Wide(className).c_str(),
                                title ? wideTitle.c_str() : nullptr));
  }

  std::string Caption(Window window) override {
    const LRESULT length = Ask(window, WM_GETTEXTLENGTH, 0, 0);
    if (length <= 0 || length > kLongestCaption) return "";
    std::wstring caption(static_cast<size_t>(length) + 1, L'\0');
    const LRESULT copied =
        Ask(window, WM_GETTEXT, caption.size(), reinterpret_cast<LPARAM>(caption.data()));
    caption.resize(static_cast<size_t>(copied < 0 ? 0 : copied > length ? length : copied));
    return Narrow(caption);
  }
};

}  // namespace

std::unique_ptr<WindowTree> NativeWindowTree() { return std::make_unique<Win32Windows>(); }

}  // namespace brindle
