#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "platform/native.h"

namespace brindle {
namespace {

// The command 0xF000 (Size) as a 16-bit value, sign-extended.
constexpr int kSizeCommand = -4096;

}  // namespace

void RemoveSizeCommand(std::uintptr_t window) {
  const HMENU menu = GetSystemMenu(reinterpret_cast<HWND>(window), FALSE);
  if (menu != nullptr) DeleteMenu(menu, static_cast<UINT>(kSizeCommand), MF_BYCOMMAND);
}

}  // namespace brindle
