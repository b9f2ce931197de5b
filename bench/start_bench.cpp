// What starting costs, beside a minimal window, each as a whole process.
// Usage: start_bench BRINDLE MINIMAL [REPETITIONS]

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "measure.h"

extern char** environ;

namespace {

struct Costs {
  std::vector<double> processorMilliseconds;
  std::vector<double> mebibytes;
};

// False when the program cannot be run or fails.
bool Measure(char* program, Costs& costs) {
  char* argv[] = {program, nullptr};
  pid_t child = 0;
  if (posix_spawn(&child, program, nullptr, nullptr, argv, environ) != 0) return false;
  int status = 0;
  rusage usage{};
  if (wait4(child, &status, 0, &usage) != child || status != 0) return false;
  const auto milliseconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
  };
  costs.processorMilliseconds.push_back(milliseconds(usage.ru_utime) +
                                        milliseconds(usage.ru_stime));
  costs.mebibytes.push_back(static_cast<double>(usage.ru_maxrss) / 1024);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  using brindle::Median;
  const int repetitions = argc > 3 ? std::atoi(argv[3]) : 11;
  if (argc < 3 || repetitions < 1) {
    std::fprintf(stderr, "Usage: start_bench BRINDLE MINIMAL [REPETITIONS]\n");
    return 2;
  }
  Costs warmUp;
  Costs program;
  Costs minimal;
  for (int i = 0; i <= repetitions; ++i) {
    const bool measured =
        Measure(argv[1], i == 0 ? warmUp : program) && Measure(argv[2], i == 0 ? warmUp : minimal);
    if (!measured) {
      std::fprintf(stderr, "A program could not be run.\n");
      return 1;
    }
  }
  brindle::Print({"start to the shown window", Median(program.processorMilliseconds), "ms CPU",
                  Median(minimal.processorMilliseconds), 1.5});
  brindle::Print(
      {"memory after starting", Median(program.mebibytes), "MiB", Median(minimal.mebibytes), 1.2});
  return 0;
}
