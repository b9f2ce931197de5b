#include "platform/chat_socket_qt.h"
#include "platform/http_client_qt.h"

namespace brindle {

std::unique_ptr<NetworkChatSocket> NativeChatSocket() { return std::make_unique<QtChatSocket>(); }

std::unique_ptr<NetworkHttpClient> NativeHttpClient(int patienceMilliseconds) {
  return std::make_unique<QtHttpClient>(patienceMilliseconds);
}

}  // namespace brindle
