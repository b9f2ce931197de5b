#pragma once
// How the program reaches a server and who it is there: what the Connection page of the options
// holds beside its boxes. A password is never among it: see SecretStore.

#include <string>
#include <vector>

#include "settings/settings_file.h"

namespace brindle {

// How the user proves an account to the server before the session begins (RFC 4422).
enum class AccountProof { kNone = 0, kPassword = 1, kCertificate = 2 };

enum class ProxyKind { kNone = 0, kSystem = 1, kSocks5 = 2, kHttp = 3 };

struct ConnectionOptions {
  AccountProof proof = AccountProof::kNone;
  std::string account;
  std::string certificatePath;  // a PEM file with the certificate and its key
  ProxyKind proxy = ProxyKind::kNone;
  std::string proxyAddress;  // host:port, for the last two kinds
  std::string proxyUser;     // empty where the proxy asks nobody who he is
  friend bool operator==(const ConnectionOptions&, const ConnectionOptions&) = default;
};

// What the user is told by whoever goes through the proxy.
inline constexpr char kProxyRefusal[] =
    "The proxy does not take this user and password. Set them on the Connection page of the "
    "options.";

inline constexpr const char* kConnectionSection = "connection options";

// What is not stored or makes no sense is as it starts.
ConnectionOptions ReadConnectionOptions(const SettingsText& settings);
void AppendConnectionOptions(const ConnectionOptions& options, std::vector<Setting>& settings);

}  // namespace brindle
