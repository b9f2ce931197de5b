#include "platform/hand_over.h"

#include <QCryptographicHash>
#include <QLocalSocket>
#include <QTimer>

namespace brindle {
namespace {

constexpr int kPatienceMilliseconds = 5000;  // a busy program answers late
constexpr qint64 kLongestText = 8192;        // bytes; more than any path or address

// Short, for the system allows no long names, and another one for each folder.
QString NameFor(const std::string& folder) {
  const auto hash =
      QCryptographicHash::hash(QByteArray::fromStdString(folder), QCryptographicHash::Sha256);
  return "brindle-" + QString::fromLatin1(hash.toHex().left(24));
}

}  // namespace

HandOver::HandOver(const std::string& folder, Taken taken) : taken_(std::move(taken)) {
  // One that was killed leaves its name behind, and the folder is ours.
  QLocalServer::removeServer(NameFor(folder));
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, &HandOver::Accept);
  server_.listen(NameFor(folder));
}

void HandOver::Accept() {
  while (QLocalSocket* socket = server_.nextPendingConnection()) {
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    QTimer::singleShot(kPatienceMilliseconds, socket, &QLocalSocket::abort);
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
      if (socket->bytesAvailable() > kLongestText) return socket->abort();
      if (!socket->canReadLine()) return;
      const std::string text = socket->readLine().trimmed().toStdString();
      socket->write("taken\n");
      socket->disconnectFromServer();
      taken_(text);
    });
  }
}

bool HandOver::Give(const std::string& folder, const std::string& text) {
  QLocalSocket socket;
  socket.connectToServer(NameFor(folder));
  if (!socket.waitForConnected(kPatienceMilliseconds)) return false;
  socket.write(QByteArray::fromStdString(text).append('\n'));
  return socket.waitForReadyRead(kPatienceMilliseconds);
}

}  // namespace brindle
