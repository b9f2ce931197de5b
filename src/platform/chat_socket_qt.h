#pragma once
// The chat socket over the toolkit's TCP and TLS sockets. Raises its events to one listener.

#include <QSslSocket>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>

#include "irc/arrival_cutter.h"
#include "platform/network.h"

namespace brindle {

class QtChatSocket : public NetworkChatSocket {
 public:
  QtChatSocket();
  ~QtChatSocket() override { Close(); }

  void Connect(const ChatRoute& route) override;
  void Close() override;
  void Send(std::string_view bytes) override;
  bool IsConnected() const override;
  bool IsSecure() const override;
  void Flush(int milliseconds) override;

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

  std::unique_ptr<QTcpSocket> socket_;  // one for each connection
  QSslSocket* tls_ = nullptr;           // the same, where it speaks TLS
  std::optional<ServerCertificate> untrusted_;
  ArrivalCutter cutter_;
  bool open_ = false;  // between Connect and Close
  QTimer readTimer_;   // goes on with a long burst after other events had their turn
};

}  // namespace brindle
