#include "settings/connection_options.h"

namespace brindle {
namespace {

template <typename Choice>
Choice ReadChoice(const SettingsText& settings, const char* key, Choice last) {
  const long long number = settings.ReadNumber(kConnectionSection, key, "0");
  if (number < 0 || number > static_cast<long long>(last)) return Choice{};
  return static_cast<Choice>(number);
}

template <typename Choice>
std::string Number(Choice choice) {
  return std::to_string(static_cast<int>(choice));
}

}  // namespace

ConnectionOptions ReadConnectionOptions(const SettingsText& settings) {
  const auto read = [&](const char* key) { return settings.Read(kConnectionSection, key); };
  return {ReadChoice(settings, "account proof", AccountProof::kCertificate),
          read("account"),
          read("certificate"),
          ReadChoice(settings, "proxy", ProxyKind::kHttp),
          read("proxy address"),
          read("proxy user")};
}

void AppendConnectionOptions(const ConnectionOptions& options, std::vector<Setting>& settings) {
  const auto append = [&](const char* key, const std::string& value) {
    settings.push_back({kConnectionSection, key, value});
  };
  append("account proof", Number(options.proof));
  append("account", options.account);
  append("certificate", options.certificatePath);
  append("proxy", Number(options.proxy));
  append("proxy address", options.proxyAddress);
  append("proxy user", options.proxyUser);
}

}  // namespace brindle
