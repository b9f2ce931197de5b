#define NOMINMAX
#include <windows.h>
// After windows.h, which it needs.
#include <psapi.h>

#include "measure.h"

namespace brindle {

double ProcessorMilliseconds() {
  LARGE_INTEGER now;
  LARGE_INTEGER second;
  QueryPerformanceCounter(&now);
  QueryPerformanceFrequency(&second);
  return static_cast<double>(now.QuadPart) * 1e3 / static_cast<double>(second.QuadPart);
}

// The baselines are programs that Windows does not have.
bool RunProgram(const std::vector<std::string>&) { return false; }

double ResidentBytes() {
  PROCESS_MEMORY_COUNTERS memory{};
  const BOOL told = GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
  return told == 0 ? 0 : static_cast<double>(memory.WorkingSetSize);
}

std::optional<double> InOwnProcess(const std::function<double()>& measure) { return measure(); }

}  // namespace brindle
