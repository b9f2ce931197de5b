#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include "platform/native.h"

namespace brindle {
namespace {

// The command Size, SC_SIZE, as a 16-bit value with its sign: not every system takes it for the
// same.
constexpr int kSizeCommand = -4096;

}  // namespace

void RemoveSizeCommand(std::uintptr_t window) {
  const HMENU menu = GetSystemMenu(reinterpret_cast<HWND>(window), FALSE);
  if (menu == nullptr) return;
  if (DeleteMenu(menu, static_cast<UINT>(kSizeCommand), MF_BYCOMMAND) != 0) return;
  DeleteMenu(menu, SC_SIZE, MF_BYCOMMAND);
}

}  // namespace brindle
