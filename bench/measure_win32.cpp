#define NOMINMAX
#include <windows.h>
// After windows.h, which it needs.
#include <psapi.h>

#include "measure.h"

namespace brindle {
namespace {

double Milliseconds(const FILETIME& time) {
  constexpr double kUnits = 1e4;  // of 100 nanoseconds
  return ((static_cast<double>(time.dwHighDateTime) * 4294967296.0) + time.dwLowDateTime) / kUnits;
}

}  // namespace

double ProcessorMilliseconds() {
  FILETIME begun, ended, system, own;
  if (GetProcessTimes(GetCurrentProcess(), &begun, &ended, &system, &own) == 0) return 0;
  return Milliseconds(system) + Milliseconds(own);
}

// The baselines are programs that Windows does not have.
bool RunProgram(const std::vector<std::string>&) { return false; }

double ResidentBytes() {
  PROCESS_MEMORY_COUNTERS memory{};
  const BOOL told = GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
  return told == 0 ? 0 : static_cast<double>(memory.WorkingSetSize);
}

// A process cannot go on in two here.
std::optional<double> InOwnProcess(const std::function<double()>&) { return std::nullopt; }

}  // namespace brindle
