#pragma once
// A clock that stands still until a test moves it, and the event loop that does so while the
// program waits.

#include <ctime>
#include <functional>

#include "base/clock.h"

namespace brindle {

class FakeClock : public Clock, public EventPump {
 public:
  TickCount Ticks() const override { return ticks; }
  std::tm LocalTime() const override { return localTime; }

  // Time passes in steps of `step`; then `onEvents` stands for whatever else happens meanwhile.
  void LetEventsRun(int) override {
    ticks += step;
    const std::function<void()> events = onEvents;  // which may be replaced by its own call
    if (events) events();
  }

  TickCount ticks = 1000;
  TickCount step = 60;
  std::tm localTime = ThreeOhSevenPm();
  std::function<void()> onEvents;

 private:
  static std::tm ThreeOhSevenPm() {
    std::tm time{};
    time.tm_hour = 15;
    time.tm_min = 7;
    return time;
  }
};

}  // namespace brindle
