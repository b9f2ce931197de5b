#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>

#include "measure.h"

extern char** environ;

namespace brindle {

double ProcessorMilliseconds() {
  timespec own{};
  rusage ended{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);  // to the nanosecond, unlike the other
  getrusage(RUSAGE_CHILDREN, &ended);
  const auto milliseconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
  };
  return static_cast<double>(own.tv_sec) * 1e3 + static_cast<double>(own.tv_nsec) / 1e6 +
         milliseconds(ended.ru_utime) + milliseconds(ended.ru_stime);
}

bool RunProgram(const std::vector<std::string>& arguments) {
  std::vector<char*> argv;
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const int error = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  return error == 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) &&
         WEXITSTATUS(status) < 2;
}

double ResidentBytes() {
  std::ifstream file("/proc/self/statm");
  double all = 0;
  double resident = 0;
  if (!(file >> all >> resident)) return 0;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

std::optional<double> InOwnProcess(const std::function<double()>& measure) {
  int ends[2];
  if (pipe(ends) != 0) return std::nullopt;
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    const double value = measure();
    const bool told = write(ends[1], &value, sizeof value) == sizeof value;
    _exit(told ? EXIT_SUCCESS : EXIT_FAILURE);
  }
  close(ends[1]);
  double value = 0;
  const bool read = child > 0 && ::read(ends[0], &value, sizeof value) == sizeof value;
  close(ends[0]);
  if (child > 0) waitpid(child, nullptr, 0);
  if (!read) return std::nullopt;
  return value;
}

}  // namespace brindle
