#pragma once
// Notices a link that has died without a word.

#include <cstdint>

namespace brindle {

// Lets the system probe a TCP connection that has been quiet for 60 seconds, three times, 10
// seconds apart; without an answer the socket reports an error. `socket` is the native handle.
// Where the system refuses, its own longer times hold.
void WatchLink(std::intptr_t socket);

}  // namespace brindle
