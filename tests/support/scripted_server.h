#pragma once
// A server that says exactly the bytes it is told and keeps every byte it receives. It takes one
// connection at a time and understands nothing.

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "wait.h"

namespace brindle::test {

class ScriptedServer {
 public:
  ScriptedServer() {
    if (!listener_.listen(QHostAddress::LocalHost)) qFatal("there is no port to be had");
    QObject::connect(&listener_, &QTcpServer::newConnection, &listener_, [this] { Accept(); });
  }

  quint16 Port() const { return listener_.serverPort(); }

  // Sends at once, as a packet of its own.
  void Send(std::string_view bytes) {
    peer_->write(bytes.data(), static_cast<qint64>(bytes.size()));
    peer_->flush();
  }

  // Waits until what was received since the last call ends in `end`, and returns all of it; what
  // there is when the time has run out.
  std::string TakeReceivedUpTo(std::string_view end) {
    WaitUntil([&] { return received_.ends_with(end); });
    return std::exchange(received_, {});
  }

  bool HasPeer() const { return peer_ != nullptr; }
  // All that came since the last Take.
  const std::string& Received() const { return received_; }

  // Ends the connection after what was sent.
  void Close() { peer_->disconnectFromHost(); }

 private:
  void Accept() {
    peer_.reset(listener_.nextPendingConnection());
    peer_->setParent(nullptr);
    peer_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    QObject::connect(peer_.get(), &QTcpSocket::readyRead, peer_.get(),
                     [this] { received_ += peer_->readAll().toStdString(); });
  }

  QTcpServer listener_;
  std::unique_ptr<QTcpSocket> peer_;
  std::string received_;
};

}  // namespace brindle::test
