#include "platform/chat_socket_qt.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSslKey>

#include "platform/keep_alive.h"
#include "platform/proxy_qt.h"

namespace brindle {
namespace {

// A burst is read in bites of this size, and for so long at a time, so that the window stays alive.
constexpr qint64 kBite = 16 * 1024;
constexpr int kTurnMilliseconds = 20;

// What may wait unread; more waits in the network, where it slows the sender down.
constexpr qint64 kReadBuffer = 1024 * 1024;

constexpr char kProxyOddAnswer[] =
    "The proxy does not take this user and password, or does not reach the server";

std::string Fingerprint(const QSslCertificate& certificate) {
  return certificate.digest(QCryptographicHash::Sha256).toHex(':').toUpper().toStdString();
}

std::string NameOf(const QStringList& names) {
  return names.isEmpty() ? "nobody" : names.first().simplified().toStdString();
}

// Keys of every kind that a PEM file may hold.
QSslKey ReadKey(const QByteArray& pem) {
  for (const auto kind : {QSsl::Rsa, QSsl::Ec, QSsl::Dsa}) {
    const QSslKey key(pem, kind);
    if (!key.isNull()) return key;
  }
  return {};
}

}  // namespace

QtChatSocket::QtChatSocket() {
  readTimer_.setSingleShot(true);
  QObject::connect(&readTimer_, &QTimer::timeout, &readTimer_, [this] { ReadSome(); });
}

void QtChatSocket::MakeSocket(const ChatRoute& route) {
  // The old one may be in the middle of an event of its own.
  if (socket_ != nullptr) socket_.release()->deleteLater();
  // The parts that TLS needs are loaded with the first socket that speaks it.
  tls_ = route.tls ? new QSslSocket : nullptr;
  socket_.reset(tls_ != nullptr ? tls_ : new QTcpSocket);
  untrusted_.reset();
  socket_->setReadBufferSize(kReadBuffer);
  QTcpSocket* socket = socket_.get();
  if (tls_ != nullptr) {
    QObject::connect(tls_, &QSslSocket::encrypted, socket, [this] { OnReady(); });
    QObject::connect(tls_, &QSslSocket::sslErrors, socket,
                     [this, trusted = route.trusted](const QList<QSslError>& errors) {
                       OnCertificateErrors(errors, trusted);
                     });
  } else {
    QObject::connect(socket, &QTcpSocket::connected, socket, [this] { OnReady(); });
  }
  QObject::connect(socket, &QTcpSocket::readyRead, socket, [this] { ReadSome(); });
  QObject::connect(socket, &QTcpSocket::errorOccurred, socket,
                   [this](QAbstractSocket::SocketError error) { OnError(error); });
}

void QtChatSocket::Connect(const ChatRoute& route) {
  MakeSocket(route);
  open_ = true;
  const QString host = QString::fromStdString(route.host);
  const auto port = static_cast<quint16>(route.port);
  const std::optional<QNetworkProxy> proxy =
      ProxyFor(route.options, proxyPassword_(), route.host, route.port);
  if (!proxy) return FailLater("The address of the proxy must be host:port.");
  socket_->setProxy(*proxy);
  if (tls_ == nullptr) return socket_->connectToHost(host, port);
  if (const auto fault = PrepareTls(*tls_, route)) return FailLater(*fault);
  tls_->connectToHostEncrypted(host, port);
}

std::optional<std::string> QtChatSocket::PrepareTls(QSslSocket& socket, const ChatRoute& route) {
  if (!QSslSocket::supportsSsl()) return "This system offers no TLS.";
  if (route.options.proof != AccountProof::kCertificate) return std::nullopt;
  const std::string& path = route.options.certificatePath;
  QFile file(QString::fromStdString(path));
  const QByteArray pem = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  const QSslCertificate certificate(pem);
  const QSslKey key = ReadKey(pem);
  if (certificate.isNull() || key.isNull()) {
    return "There is no client certificate with its key in " + path;
  }
  socket.setLocalCertificate(certificate);
  socket.setPrivateKey(key);
  return std::nullopt;
}

void QtChatSocket::OnReady() {
  WatchLink(socket_->socketDescriptor());
  listener_->wsChat_Connect();
}

void QtChatSocket::OnCertificateErrors(const QList<QSslError>& errors, const std::string& trusted) {
  const QSslCertificate certificate = tls_->peerCertificate();
  const std::string fingerprint = Fingerprint(certificate);
  if (!certificate.isNull() && fingerprint == trusted) return tls_->ignoreSslErrors();
  // The handshake fails with the next event, which tells it.
  untrusted_ = {NameOf(certificate.subjectInfo(QSslCertificate::CommonName)),
                NameOf(certificate.issuerInfo(QSslCertificate::CommonName)),
                errors.isEmpty() ? "" : errors.first().errorString().toStdString(), fingerprint};
}

void QtChatSocket::FailLater(const std::string& description) {
  QMetaObject::invokeMethod(
      socket_.get(),
      [this, description] {
        if (open_) listener_->wsChat_Error(description);
      },
      Qt::QueuedConnection);
}

void QtChatSocket::Close() {
  readTimer_.stop();
  cutter_.Reset();
  open_ = false;
  if (socket_ == nullptr) return;
  const QSignalBlocker quiet(socket_.get());
  socket_->abort();
}

void QtChatSocket::Send(std::string_view bytes) {
  if (IsConnected()) socket_->write(bytes.data(), static_cast<qint64>(bytes.size()));
}

bool QtChatSocket::IsConnected() const {
  return socket_ != nullptr && socket_->state() == QAbstractSocket::ConnectedState &&
         (tls_ == nullptr || tls_->isEncrypted());
}

bool QtChatSocket::IsSecure() const { return tls_ != nullptr && IsConnected(); }

void QtChatSocket::Flush(int milliseconds) {
  if (!IsConnected()) return;
  const QSignalBlocker quiet(socket_.get());
  if (socket_->bytesToWrite() > 0) socket_->waitForBytesWritten(milliseconds);
}

void QtChatSocket::ReadSome() {
  QElapsedTimer turn;
  turn.start();
  do {
    const QByteArray bytes = socket_->read(kBite);
    cutter_.Receive({bytes.data(), static_cast<size_t>(bytes.size())},
                    [this](std::string_view line) { listener_->wsChat_DataArrival(line); });
  } while (open_ && socket_->bytesAvailable() > 0 && turn.elapsed() < kTurnMilliseconds);
  if (open_ && socket_->bytesAvailable() > 0) readTimer_.start(0);
}

std::string QtChatSocket::Description(QAbstractSocket::SocketError error) const {
  if (error == QAbstractSocket::ProxyAuthenticationRequiredError) return kProxyRefusal;
  // Some proxies refuse a password in a way of their own.
  const bool isNamed = !socket_->proxy().user().isEmpty();
  const bool isOdd = error == QAbstractSocket::ProxyProtocolError && isNamed;
  return isOdd ? kProxyOddAnswer : socket_->errorString().toStdString();
}

void QtChatSocket::OnError(QAbstractSocket::SocketError error) {
  const std::string description = Description(error);
  // The last lines may still be waiting for their turn.
  while (open_ && socket_->bytesAvailable() > 0) ReadSome();
  if (!open_) return;
  if (untrusted_) {
    const ServerCertificate certificate = *std::exchange(untrusted_, std::nullopt);
    // Out of the socket's own event: the listener asks the user, which may take long.
    Close();
    open_ = true;
    QMetaObject::invokeMethod(
        socket_.get(),
        [this, certificate] {
          if (std::exchange(open_, false)) listener_->wsChat_Untrusted(certificate);
        },
        Qt::QueuedConnection);
  } else if (error == QAbstractSocket::RemoteHostClosedError) {
    listener_->wsChat_Close();
  } else {
    listener_->wsChat_Error(description);
  }
}

}  // namespace brindle
