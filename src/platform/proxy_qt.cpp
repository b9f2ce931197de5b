#include "platform/proxy_qt.h"

#include <QNetworkProxyFactory>

#include "base/text.h"
#include "settings/endpoint.h"

namespace brindle {
namespace {

QNetworkProxy SystemProxy(const QNetworkProxyQuery& query) {
  const QList<QNetworkProxy> proxies = QNetworkProxyFactory::systemProxyForQuery(query);
  return proxies.isEmpty() ? QNetworkProxy::NoProxy : proxies.first();
}

class SystemProxies : public QNetworkProxyFactory {
 public:
  QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override {
    return systemProxyForQuery(query);
  }
};

// The toolkit sends each character as one byte: so the bytes of UTF-8 are its characters.
QString AsBytes(const std::string& text) {
  return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

std::optional<QNetworkProxy> ChosenProxy(const ConnectionOptions& options,
                                         const std::string& password) {
  const auto parts = EndpointParts(TrimBlanks(options.proxyAddress));
  const auto port = parts.size() == 2 ? WholeNumber(parts[1], 1, kHighestPort) : std::nullopt;
  if (!port || IsBlank(parts[0])) return std::nullopt;
  const std::string host(parts[0]);
  const bool isNamed = !options.proxyUser.empty();
  return QNetworkProxy(
      options.proxy == ProxyKind::kSocks5 ? QNetworkProxy::Socks5Proxy : QNetworkProxy::HttpProxy,
      QString::fromStdString(host), static_cast<quint16>(*port), AsBytes(options.proxyUser),
      isNamed ? AsBytes(password) : QString());
}

}  // namespace

std::optional<QNetworkProxy> ProxyFor(const ConnectionOptions& options, const std::string& password,
                                      const std::string& host, int port) {
  if (options.proxy == ProxyKind::kNone) return QNetworkProxy(QNetworkProxy::NoProxy);
  if (options.proxy != ProxyKind::kSystem) return ChosenProxy(options, password);
  return SystemProxy(QNetworkProxyQuery(QString::fromStdString(host), port));
}

void UseProxy(QNetworkAccessManager& manager, const ConnectionOptions& options,
              const std::string& password) {
  // What it remembers of proxies and their passwords may be wrong by now.
  manager.clearAccessCache();
  if (options.proxy == ProxyKind::kNone || options.proxy == ProxyKind::kSystem) {
    return manager.setProxyFactory(new SystemProxies);
  }
  // Without a good address nothing is fetched, least of all past the proxy.
  const QNetworkProxy none(QNetworkProxy::HttpProxy, QString::fromStdString(options.proxyAddress));
  manager.setProxy(ChosenProxy(options, password).value_or(none));
}

}  // namespace brindle
