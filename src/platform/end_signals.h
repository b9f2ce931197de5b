#pragma once
// The system's wish that the program ends, as an event of the toolkit.

#include <functional>

namespace brindle {

// Calls `end` from the event loop when the program is asked to end from outside: by SIGTERM, SIGINT
// or SIGHUP. To be called once. Does nothing on a system that asks through the windows themselves.
void OnEndSignal(std::function<void()> end);

}  // namespace brindle
