#pragma once
// The chat socket over the toolkit's TCP socket. Raises its events to one listener.

#include <QTcpSocket>
#include <QTimer>

#include "irc/arrival_cutter.h"
#include "irc/chat_socket.h"

namespace brindle {

class QtChatSocket : public ChatSocket {
 public:
  QtChatSocket();

  // Must be set before Connect.
  void SetListener(ChatSocketEvents& listener) { listener_ = &listener; }

  void Connect(const std::string& host, int port) override;
  void Close() override;
  void Send(std::string_view bytes) override;
  bool IsConnected() const override;

  // Gives what was sent up to `milliseconds` to leave the machine: for the end of the program.
  void Flush(int milliseconds);

 private:
  void ReadSome();
  void OnError(QAbstractSocket::SocketError error);

  ChatSocketEvents* listener_ = nullptr;
  QTcpSocket socket_;
  ArrivalCutter cutter_;
  bool open_ = false;  // between Connect and Close
  QTimer readTimer_;   // goes on with a long burst after other events had their turn
};

}  // namespace brindle
