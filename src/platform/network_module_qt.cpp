#include "platform/chat_socket_qt.h"
#include "platform/http_client_qt.h"
#include "platform/network_module.h"

brindle::NetworkChatSocket* BrindleChatSocket() { return new brindle::QtChatSocket; }

brindle::NetworkHttpClient* BrindleHttpClient(int patienceMilliseconds) {
  return new brindle::QtHttpClient(patienceMilliseconds);
}
