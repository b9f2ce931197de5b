#include <windows.h>
// After windows.h, which it needs.
#include <wincred.h>

#include "platform/native.h"

namespace brindle {
namespace {

constexpr const wchar_t* kNames[kSecrets] = {L"Brindle/IRC account", L"Brindle/proxy"};

// The user's credentials, which Windows encrypts for this user alone.
class CredentialStore : public SecretStore {
 public:
  explicit CredentialStore(Secret which) : name_(kNames[static_cast<size_t>(which)]) {}

  void Read(std::function<void(std::optional<std::string>)> tell) override {
    PCREDENTIALW credential = nullptr;
    if (CredReadW(name_.c_str(), CRED_TYPE_GENERIC, 0, &credential) == FALSE)
      return tell(std::nullopt);
    const std::string secret(reinterpret_cast<const char*>(credential->CredentialBlob),
                             credential->CredentialBlobSize);
    CredFree(credential);
    tell(secret);
  }

  void Write(const std::string& secret, std::function<void(const std::string&)> tell) override {
    if (secret.empty()) {
      const bool gone = CredDeleteW(name_.c_str(), CRED_TYPE_GENERIC, 0) != FALSE;
      return tell(gone || GetLastError() == ERROR_NOT_FOUND ? "" : Trouble());
    }
    std::string blob = secret;
    CREDENTIALW credential{};
    credential.Type = CRED_TYPE_GENERIC;
    credential.TargetName = name_.data();
    credential.CredentialBlob = reinterpret_cast<LPBYTE>(blob.data());
    credential.CredentialBlobSize = static_cast<DWORD>(blob.size());
    credential.Persist = CRED_PERSIST_LOCAL_MACHINE;
    tell(CredWriteW(&credential, 0) != FALSE ? "" : Trouble());
  }

 private:
  static std::string Trouble() { return "Windows says error " + std::to_string(GetLastError()); }

  std::wstring name_;
};

}  // namespace

std::unique_ptr<SecretStore> NativeSecretStore(Secret which) {
  return std::make_unique<CredentialStore>(which);
}

}  // namespace brindle
