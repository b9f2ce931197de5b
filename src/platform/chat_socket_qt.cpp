#include "platform/chat_socket_qt.h"

#include <QElapsedTimer>

#include "platform/keep_alive.h"

namespace brindle {
namespace {

// A burst is read in bites of this size, and for so long at a time, so that the window stays alive.
constexpr qint64 kBite = 16 * 1024;
constexpr int kTurnMilliseconds = 20;

// What may wait unread; more waits in the network, where it slows the sender down.
constexpr qint64 kReadBuffer = 1024 * 1024;

}  // namespace

QtChatSocket::QtChatSocket() {
  socket_.setReadBufferSize(kReadBuffer);
  readTimer_.setSingleShot(true);
  QObject::connect(&socket_, &QTcpSocket::connected, &socket_, [this] {
    WatchLink(socket_.socketDescriptor());
    listener_->wsChat_Connect();
  });
  QObject::connect(&socket_, &QTcpSocket::readyRead, &socket_, [this] { ReadSome(); });
  QObject::connect(&readTimer_, &QTimer::timeout, &socket_, [this] { ReadSome(); });
  QObject::connect(&socket_, &QTcpSocket::errorOccurred, &socket_,
                   [this](QAbstractSocket::SocketError error) { OnError(error); });
}

void QtChatSocket::Connect(const std::string& host, int port) {
  open_ = true;
  socket_.connectToHost(QString::fromStdString(host), static_cast<quint16>(port));
}

void QtChatSocket::Close() {
  const QSignalBlocker quiet(socket_);
  readTimer_.stop();
  cutter_.Reset();
  socket_.abort();
  open_ = false;
}

void QtChatSocket::Send(std::string_view bytes) {
  if (IsConnected()) socket_.write(bytes.data(), static_cast<qint64>(bytes.size()));
}

bool QtChatSocket::IsConnected() const {
  return socket_.state() == QAbstractSocket::ConnectedState;
}

void QtChatSocket::Flush(int milliseconds) {
  const QSignalBlocker quiet(socket_);
  if (IsConnected() && socket_.bytesToWrite() > 0) socket_.waitForBytesWritten(milliseconds);
}

void QtChatSocket::ReadSome() {
  QElapsedTimer turn;
  turn.start();
  do {
    const QByteArray bytes = socket_.read(kBite);
    cutter_.Receive({bytes.data(), static_cast<size_t>(bytes.size())},
                    [this](std::string_view line) { listener_->wsChat_DataArrival(line); });
  } while (open_ && socket_.bytesAvailable() > 0 && turn.elapsed() < kTurnMilliseconds);
  if (open_ && socket_.bytesAvailable() > 0) readTimer_.start(0);
}

void QtChatSocket::OnError(QAbstractSocket::SocketError error) {
  const std::string description = socket_.errorString().toStdString();
  // The last lines may still be waiting for their turn.
  while (open_ && socket_.bytesAvailable() > 0) ReadSome();
  if (!open_) return;
  if (error == QAbstractSocket::RemoteHostClosedError) {
    listener_->wsChat_Close();
  } else {
    listener_->wsChat_Error(description);
  }
}

}  // namespace brindle
