#pragma once
// Time, seen from the program's logic: a tick count, the wall clock, and the wait that keeps the
// window alive. The logic asks for time through these seams, so that tests own it.

#include <cstdint>
#include <ctime>

namespace brindle {

using TickCount = std::int64_t;  // milliseconds since some fixed moment; never goes back

class Clock {
 public:
  virtual ~Clock() = default;
  virtual TickCount Ticks() const = 0;
  // The wall clock in local time.
  virtual std::tm LocalTime() const = 0;
};

class EventPump {
 public:
  virtual ~EventPump() = default;
  // Lets window events run; returns once the pending ones are done or after about `atMost`
  // milliseconds of waiting for more. Anything may have changed when it returns.
  virtual void LetEventsRun(int atMost) = 0;
};

// Waits until the tick count has passed now + `milliseconds`, while window events run.
void Pause(const Clock& clock, EventPump& events, int milliseconds);

}  // namespace brindle
