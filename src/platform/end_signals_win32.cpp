#include "platform/end_signals.h"

namespace brindle {

// The end of a session comes as a message to the main window, which the toolkit turns into closing.
void OnEndSignal(std::function<void()>) {}

}  // namespace brindle
