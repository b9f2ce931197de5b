#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "platform/system_menu_native.h"

namespace brindle {
namespace {

// The command 0xF000 (Size) as a 16-bit value, sign-extended.
constexpr int kSizeCommand = -4096;

}  // namespace

void NativeSystemMenu::RemoveSizeCommand() {
  const HMENU menu = GetSystemMenu(reinterpret_cast<HWND>(window_), FALSE);
  if (menu != nullptr) DeleteMenu(menu, static_cast<UINT>(kSizeCommand), MF_BYCOMMAND);
}

}  // namespace brindle
