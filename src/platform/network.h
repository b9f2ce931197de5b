#pragma once
// What goes over the network: the chat, and the updater's transfers.

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "irc/chat_socket.h"
#include "settings/connection_options.h"
#include "update/http_client.h"

namespace brindle {

class NetworkChatSocket : public ChatSocket {
 public:
  // Both must be set before Connect.
  void SetListener(ChatSocketEvents& listener) { listener_ = &listener; }
  // Asked for the password of the proxy's user.
  void SetProxyPassword(std::function<std::string()> password) {
    proxyPassword_ = std::move(password);
  }

  // Gives what was sent up to `milliseconds` to leave the machine: for the end of the program.
  virtual void Flush(int milliseconds) = 0;

 protected:
  ChatSocketEvents* listener_ = nullptr;
  std::function<std::string()> proxyPassword_ = [] { return ""; };
};

class NetworkHttpClient : public HttpClient {
 public:
  // A server is given up after this long without a byte of its answer.
  static constexpr int kPatienceMilliseconds = 30000;

  // Who is told the states; must be set before Execute.
  void SetListener(std::function<void(HttpState)> listener) { listener_ = std::move(listener); }

  // Which proxy to go through from now on, with the password of its user.
  virtual void SetConnection(const ConnectionOptions& options, const std::string& password) = 0;

 protected:
  std::function<void(HttpState)> listener_;
};

// What stands behind them may be loaded with the first connection. When it is missing, every
// connection fails.
std::unique_ptr<NetworkChatSocket> NativeChatSocket();
std::unique_ptr<NetworkHttpClient> NativeHttpClient(int patienceMilliseconds);

}  // namespace brindle
