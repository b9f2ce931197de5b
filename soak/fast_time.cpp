// The clocks and the wait of the C library, for the toolkit as well.

#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include "soak/soak.h"

namespace {

constexpr long kSecond = 1'000'000'000;  // nanoseconds
constexpr long kLong = kSecond / 10;
constexpr long kMoment = kSecond / 1000;
bool skips = false;
long skipped = 0;

}  // namespace

extern "C" int clock_gettime(clockid_t id, timespec* time) noexcept {
  const auto result = static_cast<int>(syscall(SYS_clock_gettime, id, time));
  if (result != 0 || (id != CLOCK_MONOTONIC && id != CLOCK_REALTIME)) return result;
  const long nanoseconds = time->tv_nsec + skipped % kSecond;
  time->tv_sec += skipped / kSecond + nanoseconds / kSecond;
  time->tv_nsec = nanoseconds % kSecond;
  return 0;
}

extern "C" int ppoll(pollfd* sockets, nfds_t count, const timespec* wait, const sigset_t* mask) {
  const bool skip = skips && wait != nullptr;
  timespec left = wait == nullptr ? timespec{} : *wait;  // the system writes into it
  // A long wait gives what is on its way between two sockets a moment to arrive.
  if (skip) left = {0, wait->tv_sec > 0 || wait->tv_nsec > kLong ? kMoment : 0};
  const auto ready = static_cast<int>(
      syscall(SYS_ppoll, sockets, count, wait == nullptr ? nullptr : &left, mask, _NSIG / 8));
  if (skip && ready == 0) skipped += wait->tv_sec * kSecond + wait->tv_nsec;
  return ready;
}

void brindle::soak::SkipWaits(bool skip) { skips = skip; }
