#pragma once
// The proxy that the user has chosen, as the toolkit's sockets take it. A password counts only
// together with a user's name.

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <optional>
#include <string>

#include "settings/connection_options.h"

namespace brindle {

// For a TCP connection there; proxies look up the name of the host themselves. Nothing when the
// address of the proxy is none.
std::optional<QNetworkProxy> ProxyFor(const ConnectionOptions& options, const std::string& password,
                                      const std::string& host, int port);

// The same for web pages, which go the system's way where the user has chosen none.
void UseProxy(QNetworkAccessManager& manager, const ConnectionOptions& options,
              const std::string& password);

}  // namespace brindle
