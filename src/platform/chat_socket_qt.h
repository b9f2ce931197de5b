#pragma once
// The chat socket over the toolkit's TCP and TLS sockets. Raises its events to one listener.

#include <QSslSocket>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "irc/arrival_cutter.h"
#include "irc/chat_socket.h"

namespace brindle {

class QtChatSocket : public ChatSocket {
 public:
  QtChatSocket();
  ~QtChatSocket() override { Close(); }

  // Must be set before Connect.
  void SetListener(ChatSocketEvents& listener) { listener_ = &listener; }

  // Asked for the password of the proxy's user.
  void SetProxyPassword(std::function<std::string()> password) {
    proxyPassword_ = std::move(password);
  }

  void Connect(const ChatRoute& route) override;
  void Close() override;
  void Send(std::string_view bytes) override;
  bool IsConnected() const override;
  bool IsSecure() const override;

  // Gives what was sent up to `milliseconds` to leave the machine: for the end of the program.
  void Flush(int milliseconds);

 private:
  void MakeSocket(const ChatRoute& route);
  // What makes the route impossible; nothing when it can be gone.
  std::optional<std::string> PrepareTls(QSslSocket& socket, const ChatRoute& route);
  void OnReady();
  void OnCertificateErrors(const QList<QSslError>& errors, const std::string& trusted);
  void ReadSome();
  void OnError(QAbstractSocket::SocketError error);
  std::string Description(QAbstractSocket::SocketError error) const;
  // Raises the error with the next turn of the event loop.
  void FailLater(const std::string& description);

  ChatSocketEvents* listener_ = nullptr;
  std::function<std::string()> proxyPassword_ = [] { return ""; };
  std::unique_ptr<QTcpSocket> socket_;  // one for each connection
  QSslSocket* tls_ = nullptr;           // the same, where it speaks TLS
  std::optional<ServerCertificate> untrusted_;
  ArrivalCutter cutter_;
  bool open_ = false;  // between Connect and Close
  QTimer readTimer_;   // goes on with a long burst after other events had their turn
};

}  // namespace brindle
