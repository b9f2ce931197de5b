#include "irc/server_pace.h"

#include <algorithm>

namespace brindle {
namespace {

constexpr TickCount kPause = 200;  // between two request lines, where the server keeps up
constexpr double kCareful = 3;     // credit below which the server is probed
constexpr double kProven = -4;     // credit at which it has shown that it takes more
constexpr TickCount kProbePause = 100;
constexpr TickCount kTypedRest = 1000;  // probing waits so long after a typed line
constexpr TickCount kLongestUsual = 700;
constexpr std::uint64_t kRequestsPerPing = 5;
constexpr std::uint64_t kWindow = 6;  // request lines ahead of the last answer, on a near server
constexpr std::uint64_t kEarlyWindow = 3;  // and between PINGs, while the freedom is new
constexpr double kReserve = 2;             // credit kept for what the user types
constexpr double kLimitedBurst = 6;
constexpr double kSlack = 1.02;  // a little slower than the server
constexpr double kLeastInterval = 1000;
constexpr std::uint64_t kMostPerCheck = 40;
constexpr std::uint64_t kRequestsToProbe = 300;
constexpr int kMeasures = 3;
constexpr int kTrust = 8;
constexpr std::uint64_t kFirstUnknown = 3;

}  // namespace

void ServerPace::Refill(TickCount now) {
  if (refilledAt_) {
    credit_ = std::min(most_, credit_ + static_cast<double>(now - *refilledAt_) / interval_);
  }
  refilledAt_ = now;
  if (credit_ >= most_) full_ = true;
}

void ServerPace::Spend(TickCount now, int weight) {
  Refill(now);
  credit_ -= weight;
  commands_ += weight;
}

void ServerPace::RequestSent(TickCount now) {
  lastRequest_ = now;
  ++requests_;
  ++sincePing_;
  if (state_ == State::kLimited) ++sinceProbing_;
  Spend(now, 1);
}

void ServerPace::TypedSent(TickCount now) {
  lastTyped_ = now;
  Spend(now, 1);
}

TickCount ServerPace::Usual() const {
  return std::min(kLongestUsual, usual_.value_or(kLongestUsual));
}

TickCount ServerPace::Waiting(TickCount now) const {
  return open_.empty() ? 0 : now - open_.begin()->second.sent;
}

std::optional<std::uint32_t> ServerPace::NextPing(TickCount now) {
  if (!begun_) return std::nullopt;
  Refill(now);
  Decide(now);
  if (!WantsPing(now)) return std::nullopt;
  sincePing_ = 0;
  Spend(now, 1);
  open_[++pings_] = {now, requests_, commands_};
  return pings_;
}

// What the count alone decides.
void ServerPace::Decide(TickCount now) {
  if (state_ == State::kUnknown && credit_ < kCareful) {
    state_ = State::kProbing;
  } else if (state_ == State::kProbing && open_.empty() && credit_ <= kProven) {
    freeFrom_ = requests_;
    state_ = State::kFree;
  } else if (state_ == State::kLimited && open_.empty() && sinceProbing_ >= kRequestsToProbe &&
             credit_ - 1 >= kReserve && now - lastRequest_ >= kPause) {
    sinceProbing_ = 0;
    state_ = State::kProbing;
  }
}

bool ServerPace::WantsPing(TickCount now) const {
  switch (state_) {
    case State::kUnknown:
      return !usual_ && open_.empty();  // the first answer tells how far the server is
    case State::kProbing:
      return open_.empty() && now - lastTyped_ >= kTypedRest &&
             now - std::max(lastAnswer_, lastRequest_) >= kProbePause - Usual();
    case State::kFree:
      return !IsLate(Waiting(now)) && now - lastRequest_ >= kPause / 2 &&
             sincePing_ >= (IsEarlyFree() ? kEarlyWindow : kRequestsPerPing);
    case State::kMeasuring:
      return open_.empty();
    case State::kLimited:
      return open_.empty() && credit_ - 1 >= kReserve && now - lastRequest_ >= kPause &&
             sincePing_ >= checkEvery_;
  }
  return false;
}

bool ServerPace::MayLine(TickCount now) const {
  if (!begun_) return true;
  switch (state_) {
    case State::kUnknown:
      return credit_ >= kCareful && (open_.empty() || requests_ < kFirstUnknown);
    case State::kFree: {
      const auto onTheWay = static_cast<std::uint64_t>((Usual() + kPause - 1) / kPause);
      const std::uint64_t window = IsEarlyFree() ? kEarlyWindow : kWindow;
      const std::uint64_t perPing = IsEarlyFree() ? kEarlyWindow : kRequestsPerPing;
      return !IsLate(Waiting(now)) && sincePing_ < perPing &&
             requests_ - confirmed_ < window + onTheWay;
    }
    case State::kLimited:
      return open_.empty() && credit_ - 1 >= kReserve && sincePing_ < checkEvery_ &&
             sinceProbing_ < kRequestsToProbe;
    case State::kProbing:
    case State::kMeasuring:
      break;
  }
  return false;
}

bool ServerPace::Answered(std::uint32_t number, TickCount now) {
  const auto found = open_.find(number);
  if (found == open_.end()) return false;
  const Ping ping = found->second;
  // A server answers in order.
  open_.erase(open_.begin(), std::next(found));
  confirmed_ = ping.requests;
  lastAnswer_ = now;
  const TickCount delay = now - ping.sent;
  const bool late = IsLate(delay);
  usual_ = std::min(usual_.value_or(delay), delay);
  if (state_ == State::kMeasuring) {
    TakeMeasure(now, late, ping);
    return true;
  }
  if (state_ == State::kLimited && !late) checkEvery_ = std::min(2 * checkEvery_, kMostPerCheck);
  if (!late || !open_.empty()) return true;
  if (state_ == State::kLimited) {
    SlowDown(now, ping);
  } else if (state_ == State::kFree && trust_ > 0) {
    --trust_;
  } else {
    emptyAt_ = now;
    emptyCommands_ = ping.commands;
    measuresLeft_ = kMeasures;
    state_ = State::kMeasuring;
  }
  return true;
}

void ServerPace::TakeMeasure(TickCount now, bool late, const Ping& ping) {
  --measuresLeft_;
  // The first answer only tells that what had piled up is done.
  if (late && measuresLeft_ < kMeasures - 1) {
    interval_ = std::max(interval_, kLeastInterval * kSlack);
    checkEvery_ = kFirstCheck;
    NothingLeft(now, ping);
    state_ = State::kLimited;
  } else if (measuresLeft_ == 0) {
    trust_ = kTrust;
    freeFrom_ = requests_;
    state_ = State::kFree;
  }
}

void ServerPace::SlowDown(TickCount now, const Ping& ping) {
  const std::int64_t commands = ping.commands - emptyCommands_;
  if (commands >= static_cast<std::int64_t>(kFirstCheck) && !full_) {
    const double seen =
        static_cast<double>(now - emptyAt_) / static_cast<double>(commands) * kSlack;
    interval_ = std::max(interval_, std::min(seen, 2 * interval_));
  }
  checkEvery_ = kFirstCheck;
  NothingLeft(now, ping);
}

void ServerPace::NothingLeft(TickCount now, const Ping& ping) {
  emptyAt_ = now;
  emptyCommands_ = ping.commands;
  full_ = false;
  most_ = kLimitedBurst;
  credit_ = -static_cast<double>(commands_ - ping.commands);
  refilledAt_ = now;
}

}  // namespace brindle
