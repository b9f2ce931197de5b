// The clocks and the wait of the C library, for the toolkit as well.

#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include "soak/soak.h"

namespace {

constexpr long kNanoseconds = 1'000'000'000;

bool skips = false;
timespec skipped{};

void Add(timespec& time, const timespec& more) {
  time.tv_sec += more.tv_sec;
  time.tv_nsec += more.tv_nsec;
  if (time.tv_nsec < kNanoseconds) return;
  time.tv_nsec -= kNanoseconds;
  ++time.tv_sec;
}

}  // namespace

extern "C" int clock_gettime(clockid_t id, timespec* time) noexcept {
  const auto result = static_cast<int>(syscall(SYS_clock_gettime, id, time));
  if (result == 0 && (id == CLOCK_MONOTONIC || id == CLOCK_REALTIME)) Add(*time, skipped);
  return result;
}

extern "C" int ppoll(pollfd* sockets, nfds_t count, const timespec* wait, const sigset_t* mask) {
  const timespec none{};
  const timespec* most = skips && wait != nullptr ? &none : wait;
  timespec left = most == nullptr ? none : *most;  // the system writes into it
  const auto ready = static_cast<int>(
      syscall(SYS_ppoll, sockets, count, most == nullptr ? nullptr : &left, mask, _NSIG / 8));
  if (ready == 0 && skips && wait != nullptr) Add(skipped, *wait);
  return ready;
}

namespace brindle::soak {

void SkipWaits(bool skip) { skips = skip; }

std::int64_t WorkedMicroseconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return std::int64_t{time.tv_sec} * 1'000'000 + time.tv_nsec / 1000;
}

}  // namespace brindle::soak
