#include <windows.h>

#include "platform/native.h"

namespace brindle {
namespace {

// A window that does not answer must not freeze ours.
constexpr UINT kPatienceMilliseconds = 500;

// Far longer than any caption: a program that claims more is not believed.
constexpr LRESULT kLongestCaption = 4096;

HWND Handle(WindowTree::Window window) { return reinterpret_cast<HWND>(window); }

WindowTree::Window Number(HWND window) { return reinterpret_cast<WindowTree::Window>(window); }

// The answer to a message; 0 when none comes.
LRESULT Ask(WindowTree::Window window, UINT message, WPARAM number, LPARAM text) {
  DWORD_PTR answer = 0;
  const LRESULT asked = SendMessageTimeoutA(Handle(window), message, number, text, SMTO_ABORTIFHUNG,
                                            kPatienceMilliseconds, &answer);
  return asked == 0 ? 0 : static_cast<LRESULT>(answer);
}

class Win32Windows : public WindowTree {
 public:
  Window FindTopLevel(const std::string& className) override {
    return Number(FindWindowA(className.c_str(), nullptr));
  }

  Window FindChild(Window parent, Window after, const std::string& className,
                   const std::optional<std::string>& title) override {
    return Number(FindWindowExA(Handle(parent), Handle(after), className.c_str(),
                                title ? title->c_str() : nullptr));
  }

  std::string Caption(Window window) override {
    const LRESULT length = Ask(window, WM_GETTEXTLENGTH, 0, 0);
    if (length <= 0 || length > kLongestCaption) return "";
    std::string caption(static_cast<size_t>(length) + 1, '\0');
    const LRESULT copied =
        Ask(window, WM_GETTEXT, caption.size(), reinterpret_cast<LPARAM>(caption.data()));
    caption.resize(static_cast<size_t>(copied < 0 ? 0 : copied > length ? length : copied));
    return caption;
  }
};

}  // namespace

std::unique_ptr<WindowTree> NativeWindowTree() { return std::make_unique<Win32Windows>(); }

}  // namespace brindle
