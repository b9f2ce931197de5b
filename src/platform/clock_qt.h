#pragma once
// Time and the wait that keeps the window alive, from the toolkit's event loop.

#include <QElapsedTimer>

#include "base/clock.h"

namespace brindle {

class QtClock : public Clock {
 public:
  QtClock() { since_.start(); }
  TickCount Ticks() const override { return since_.elapsed(); }
  std::tm LocalTime() const override;

 private:
  QElapsedTimer since_;
  mutable qint64 second_ = -1;  // for which localTime_ was found
  mutable std::tm localTime_{};
};

class QtEventPump : public EventPump {
 public:
  void LetEventsRun(int atMost) override;
};

}  // namespace brindle
