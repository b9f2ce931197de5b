#pragma once
// When a lost connection is to be made again: after pauses that grow from two seconds to five
// minutes, each shorter or longer by chance, so that many programs do not come back at once.

#include <optional>

#include "base/clock.h"

namespace brindle {

class Reconnect {
 public:
  static constexpr int kFirstPause = 2000;  // milliseconds
  static constexpr int kLongestPause = 300'000;

  // A connection was lost, or an attempt to make it again has failed.
  void Lost(TickCount now);
  // Nothing is to be made again.
  void Stop() { due_.reset(); }
  // A connection stands: the next pause is the first again.
  void Made();

  bool IsWaiting() const { return due_.has_value(); }
  bool IsDue(TickCount now) const { return due_ && now >= *due_; }
  // Whole seconds that are left, at least 1.
  int SecondsLeft(TickCount now) const;

 private:
  int pause_ = kFirstPause;
  std::optional<TickCount> due_;
};

// Finds out that the other side is gone although no error came: asks when it has been silent, and
// gives it up when it stays so.
class LinkWatch {
 public:
  static constexpr int kSilence = 35'000;   // milliseconds, until we ask
  static constexpr int kPatience = 20'000;  // for anything at all in answer

  enum class Verdict { kWell, kAsk, kDead };

  // Something came. When that was, the next look finds out: a busy room has no time for more.
  void Heard() {
    hasHeard_ = true;
    asked_.reset();
  }
  // Ask is said once a silence.
  Verdict Look(TickCount now);

 private:
  bool hasHeard_ = false;  // since the last look
  TickCount heard_ = 0;
  std::optional<TickCount> asked_;
};

}  // namespace brindle
