#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include "platform/keep_alive.h"

namespace brindle {

void WatchLink(std::intptr_t socket) {
  const auto set = [socket](int level, int option, int value) {
    ::setsockopt(static_cast<int>(socket), level, option, &value, sizeof value);
  };
  set(SOL_SOCKET, SO_KEEPALIVE, 1);
  set(IPPROTO_TCP, TCP_KEEPIDLE, 60);
  set(IPPROTO_TCP, TCP_KEEPINTVL, 10);
  set(IPPROTO_TCP, TCP_KEEPCNT, 3);
}

}  // namespace brindle
