#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <cstdio>

#include "platform/console.h"

namespace brindle {
namespace {

bool Goes(DWORD stream) {
  const HANDLE handle = GetStdHandle(stream);
  return handle != nullptr && handle != INVALID_HANDLE_VALUE;
}

}  // namespace

void UseCallersConsole() {
  const bool output = Goes(STD_OUTPUT_HANDLE);
  const bool error = Goes(STD_ERROR_HANDLE);
  if ((output && error) || AttachConsole(ATTACH_PARENT_PROCESS) == 0) return;
  // What cannot be shown is lost, as it would have been without.
  if (!output && std::freopen("CONOUT$", "w", stdout) == nullptr) return;
  if (!error && std::freopen("CONOUT$", "w", stderr) == nullptr) return;
}

}  // namespace brindle
