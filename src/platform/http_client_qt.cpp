#include "platform/http_client_qt.h"

#include <QEventLoop>
#include <QNetworkRequest>
#include <QUrl>

#include "settings/product.h"

namespace brindle {
namespace {

// What may wait unread; more waits in the network.
constexpr qint64 kReadBuffer = 256 * 1024;

constexpr int kMostRedirects = 10;
constexpr int kOk = 200;
constexpr int kFirstRedirect = 300;
constexpr int kFirstError = 400;
constexpr int kWantsProof = 401;
constexpr int kProxyWantsProof = 407;

constexpr int kNews = 1;

}  // namespace

QtHttpClient::QtHttpClient(int patienceMilliseconds) : patience_(patienceMilliseconds) {
  raiser_.setSingleShot(true);
  QObject::connect(&raiser_, &QTimer::timeout, &raiser_, [this] { RaiseNext(); });
}

QtHttpClient::~QtHttpClient() { Cancel(); }

void QtHttpClient::Execute(const std::string& url) {
  Cancel();
  completed_ = false;
  QNetworkRequest request(QUrl(QString::fromStdString(url), QUrl::StrictMode));
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                       QNetworkRequest::NoLessSafeRedirectPolicy);
  request.setMaximumRedirectsAllowed(kMostRedirects);
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  request.setHeader(QNetworkRequest::UserAgentHeader,
                    QString::fromStdString("Brindle/" + VersionNumber()));
  // The bytes as they are: their number must be the stated length.
  request.setRawHeader("Accept-Encoding", "identity");
  request.setTransferTimeout(patience_);
  Raise(HttpState::kConnecting);
  reply_ = manager_.get(request);
  reply_->setReadBufferSize(kReadBuffer);
  Watch(*reply_);
}

void QtHttpClient::Watch(QNetworkReply& reply) {
  QObject::connect(&reply, &QNetworkReply::requestSent, &reply,
                   [this] { Raise(HttpState::kRequesting); });
  QObject::connect(&reply, &QNetworkReply::metaDataChanged, &reply, [this] { OnHeaders(); });
  QObject::connect(&reply, &QNetworkReply::finished, &reply, [this] { OnFinished(); });
}

void QtHttpClient::OnHeaders() {
  const int status = Status();
  if (completed_ || status < kOk) return;
  // A redirect is followed; an error need not send its page first. Any other success than 200 is
  // not the whole file.
  if (status >= kFirstRedirect && status < kFirstError) return;
  completed_ = true;
  Raise(status == kOk ? HttpState::kResponseCompleted : Failure());
}

void QtHttpClient::OnFinished() {
  if (completed_) return;
  completed_ = true;
  Raise(Failure());
}

HttpState QtHttpClient::Failure() const {
  const int status = Status();
  // Some proxies refuse a password as if they were the server.
  const bool isRefused = status == kProxyWantsProof ||
                         (status == kWantsProof && !manager_.proxy().user().isEmpty()) ||
                         reply_->error() == QNetworkReply::ProxyAuthenticationRequiredError;
  return isRefused ? HttpState::kProxyRefused : HttpState::kError;
}

int QtHttpClient::Status() const {
  return reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

void QtHttpClient::Raise(HttpState state) {
  waiting_.push_back(state);
  raiser_.start(0);
}

void QtHttpClient::RaiseNext() {
  const HttpState state = waiting_.front();
  waiting_.pop_front();
  if (!waiting_.empty()) raiser_.start(0);
  // The last step: when it returns, this client may be gone, and what it held of the listener too.
  const auto listener = listener_;
  listener(state);
}

std::string QtHttpClient::GetHeader(const std::string& name) {
  if (reply_ == nullptr) return "";
  return reply_->rawHeader(QByteArray::fromStdString(name)).toStdString();
}

bool QtHttpClient::IsBroken() const {
  return reply_ == nullptr || reply_->error() != QNetworkReply::NoError;
}

std::optional<std::string> QtHttpClient::GetChunk(size_t size) {
  const auto wanted = static_cast<qint64>(size);
  while (!IsBroken() && !reply_->isFinished() && reply_->bytesAvailable() < wanted) {
    if (!WaitForNews()) Cancel();
  }
  if (IsBroken()) return std::nullopt;
  return reply_->read(wanted).toStdString();
}

bool QtHttpClient::WaitForNews() {
  QEventLoop loop;
  const auto wake = [&loop] { loop.exit(kNews); };
  QObject::connect(reply_, &QNetworkReply::readyRead, &loop, wake);
  QObject::connect(reply_, &QNetworkReply::finished, &loop, wake);
  QObject::connect(reply_, &QObject::destroyed, &loop, wake);
  return loop.exec() == kNews;
}

void QtHttpClient::Cancel() {
  raiser_.stop();
  waiting_.clear();
  if (reply_ == nullptr) return;
  QNetworkReply* const reply = reply_;
  reply_ = nullptr;
  QObject::disconnect(reply, nullptr, reply, nullptr);
  // Wakes whoever waits in GetChunk.
  reply->abort();
  reply->deleteLater();
}

}  // namespace brindle
