#pragma once
// How fast an IRC server takes lines, found out while a long run of them goes on. Servers let some
// commands through at once and then make each later one wait; what waits there holds up everything
// that the user says, and too much of it ends the session. So the pace keeps count of what the
// server still takes at once, asks with a PING how far it has come, and never lets lines pile up.
//
// It begins with the count of the strictest server known (kUnknown) and tries with PINGs alone
// whether the server takes more than that (kProbing); if so, lines go as fast as they come (kFree).
// Once a PING is answered late, it finds out whether that was an accident (kMeasuring); if not, it
// sends no faster than the server takes and keeps a reserve for what the user types (kLimited).
// docs/PACE.md tells what was measured.
//
// Times are milliseconds; every member is told the time, which must not go back. What was learnt
// holds until Reset.

#include <cstdint>
#include <map>
#include <optional>

#include "base/clock.h"

namespace brindle {

class ServerPace {
 public:
  enum class State { kUnknown, kProbing, kFree, kMeasuring, kLimited };

  // A new session has begun.
  void Reset() { *this = ServerPace(); }

  // Between these, request lines wait their turn.
  void BeginRun() { begun_ = true; }
  void EndRun() { begun_ = false; }

  // The number of a PING that is to go now, which counts as sent; nothing when none is due.
  std::optional<std::uint32_t> NextPing(TickCount now);
  // True when the next request line may go now.
  bool MayLine(TickCount now) const;

  void RequestSent(TickCount now);
  // The user has typed a line: it may always go.
  void TypedSent(TickCount now);
  // Another line that the server counts, as `weight` commands.
  void OtherSent(TickCount now, int weight) { Spend(now, weight); }
  // The answer to PING `number` has come; false when there is no such PING.
  bool Answered(std::uint32_t number, TickCount now);

  // Request lines that the server has taken.
  std::uint64_t RequestsConfirmed() const { return confirmed_; }
  // How long the oldest PING has been waiting for its answer; 0 when there is none.
  TickCount Waiting(TickCount now) const;

  State CurrentState() const { return state_; }

 private:
  struct Ping {
    TickCount sent;
    std::uint64_t requests;  // sent before it
    std::int64_t commands;   // sent before it, itself included
  };

  static constexpr double kBurst = 10;

  void Refill(TickCount now);
  void Spend(TickCount now, int weight);
  void Decide(TickCount now);
  bool WantsPing(TickCount now) const;
  TickCount Usual() const;
  bool IsLate(TickCount delay) const { return delay > Usual() + kLate; }
  bool IsEarlyFree() const { return requests_ - freeFrom_ < kEarlyFree; }
  void TakeMeasure(TickCount now, bool late, const Ping& ping);
  void SlowDown(TickCount now, const Ping& ping);
  // The server has just worked off all commands up to that PING: nothing is left to spend.
  void NothingLeft(TickCount now, const Ping& ping);

  static constexpr TickCount kLate = 300;  // beyond the usual time of an answer
  static constexpr std::uint64_t kEarlyFree = 40;
  static constexpr std::uint64_t kFirstCheck = 4;

  State state_ = State::kUnknown;
  bool begun_ = false;
  double credit_ = kBurst;  // commands that the server takes at once; below 0, those that wait
  double most_ = kBurst;
  double interval_ = 1000;  // in which the server takes one command
  std::optional<TickCount> refilledAt_;
  std::optional<TickCount> usual_;  // the shortest answer so far
  std::map<std::uint32_t, Ping> open_;
  std::uint32_t pings_ = 0;
  std::uint64_t requests_ = 0;
  std::uint64_t confirmed_ = 0;
  std::int64_t commands_ = 0;
  std::uint64_t sincePing_ = 0;
  std::uint64_t sinceProbing_ = 0;  // request lines while limited
  std::uint64_t freeFrom_ = 0;      // of requests_
  std::uint64_t checkEvery_ = kFirstCheck;
  TickCount lastRequest_ = kLongAgo;
  TickCount lastAnswer_ = kLongAgo;
  TickCount lastTyped_ = kLongAgo;
  TickCount emptyAt_ = 0;  // the server had nothing left to do
  std::int64_t emptyCommands_ = 0;
  bool full_ = false;  // the credit has been at its most since then
  int measuresLeft_ = 0;
  int trust_ = 0;  // late answers that are taken for accidents

  static constexpr TickCount kLongAgo = -1'000'000;
};

}  // namespace brindle
