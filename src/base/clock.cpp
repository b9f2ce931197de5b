#include "base/clock.h"

namespace brindle {

void Pause(const Clock& clock, EventPump& events, int milliseconds) {
  const TickCount target = clock.Ticks() + milliseconds;
  for (TickCount now = clock.Ticks(); now <= target; now = clock.Ticks()) {
    events.LetEventsRun(static_cast<int>(target - now) + 1);
  }
}

}  // namespace brindle
