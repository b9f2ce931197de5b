#pragma once
// Where the system keeps secrets for its user: a password is never in a file of ours.

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace brindle {

enum class Secret { kAccountPassword = 0, kProxyPassword = 1 };
inline constexpr size_t kSecrets = 2;

// Keeps one secret.
class SecretStore {
 public:
  virtual ~SecretStore() = default;
  // Looks the secret up and tells it later, or nothing when there is none that can be had. The
  // system may ask its user meanwhile.
  virtual void Read(std::function<void(std::optional<std::string> secret)> tell) = 0;
  // Keeps the secret in place of the one before, or forgets it when it is empty, and tells later
  // what went wrong, which is empty when all went well.
  virtual void Write(const std::string& secret,
                     std::function<void(const std::string& trouble)> tell) = 0;
};

}  // namespace brindle
