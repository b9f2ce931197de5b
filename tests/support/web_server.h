#pragma once
// A small HTTP server on loopback whose answers, and whose faults, a test chooses.

#include <QByteArray>
#include <QHash>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>

namespace brindle::test {

class WebServer {
 public:
  struct Answer {
    QByteArray status = "200 OK";
    QByteArray headers = {};  // further lines, each with its CR LF
    QByteArray body = {};
    qint64 bodySize = -1;  // the body repeated up to this size; as it is when negative
    bool lengthStated = true;
    qint64 sentOnly = -1;  // bytes of the body that are sent; all when negative
    bool closes = true;    // after that; a server that does not close stalls
    bool silent = false;   // says nothing at all
  };

  WebServer() {
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { Accept(); });
    if (!server_.listen(QHostAddress::LocalHost)) qFatal("no port to listen on");
  }

  quint16 Port() const { return server_.serverPort(); }

  QString Address() const { return "http://127.0.0.1:" + QString::number(Port()); }

  void Serve(const QByteArray& path, const Answer& answer) { answers_[path] = answer; }

  // The bytes of bodies given to the network so far.
  qint64 BytesSent() const { return sent_; }

 private:
  void Accept() {
    QTcpSocket* const socket = server_.nextPendingConnection();
    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
      if (!socket->canReadLine()) return;
      const QByteArray path = socket->readLine().split(' ').value(1);
      QObject::disconnect(socket, &QTcpSocket::readyRead, nullptr, nullptr);
      Reply(*socket, answers_.value(path, {.status = "404 Not Found", .body = "no such page"}));
    });
  }

  void Reply(QTcpSocket& socket, const Answer& answer) {
    if (answer.silent) return;
    const qint64 size = answer.bodySize < 0 ? answer.body.size() : answer.bodySize;
    QByteArray head = "HTTP/1.1 " + answer.status + "\r\nConnection: close\r\n" + answer.headers;
    if (answer.lengthStated) head += "Content-Length: " + QByteArray::number(size) + "\r\n";
    socket.write(head + "\r\n");
    const qint64 end = answer.sentOnly < 0 ? size : answer.sentOnly;
    const auto more = [this, &socket, body = answer.body, end, closes = answer.closes,
                       at = qint64{0}]() mutable {
      while (at < end && socket.bytesToWrite() < kAhead) {
        const qint64 start = at % body.size();
        const qint64 written =
            socket.write(body.constData() + start, std::min(end - at, body.size() - start));
        at += written;
        sent_ += written;
      }
      if (at == end && closes) socket.disconnectFromHost();
    };
    QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, more);
  }

  static constexpr qint64 kAhead = 128 * 1024;

  QTcpServer server_;
  QHash<QByteArray, Answer> answers_;
  qint64 sent_ = 0;
};

}  // namespace brindle::test
