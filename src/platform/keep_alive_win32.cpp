#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <winsock2.h>
// After winsock2.h, which it needs.
#include <mstcpip.h>

#include "platform/keep_alive.h"

namespace brindle {

// The number of probes cannot be set here: the system tries ten times.
void WatchLink(std::intptr_t socket) {
  tcp_keepalive times{1, 60'000, 10'000};
  DWORD answered = 0;
  WSAIoctl(static_cast<SOCKET>(socket), SIO_KEEPALIVE_VALS, &times, sizeof times, nullptr, 0,
           &answered, nullptr, nullptr);
}

}  // namespace brindle
