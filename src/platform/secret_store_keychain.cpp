#include <qt6keychain/keychain.h>

#include <QObject>
#include <QString>

#include "platform/native.h"

namespace brindle {
namespace {

constexpr char kService[] = "Brindle";
constexpr const char* kKeys[kSecrets] = {"IRC account", "proxy"};

// Jobs delete themselves when they are done; one that outlives the store tells nobody.
class KeychainStore : public SecretStore {
 public:
  explicit KeychainStore(Secret which) : key_(kKeys[static_cast<size_t>(which)]) {}

  void Read(std::function<void(std::optional<std::string>)> tell) override {
    auto* job = new QKeychain::ReadPasswordJob(kService);
    job->setKey(key_);
    QObject::connect(job, &QKeychain::Job::finished, &context_, [job, tell] {
      tell(job->error() == QKeychain::NoError ? std::optional(job->textData().toStdString())
                                              : std::nullopt);
    });
    job->start();
  }

  void Write(const std::string& secret, std::function<void(const std::string&)> tell) override {
    QKeychain::Job* job = nullptr;
    if (secret.empty()) {
      job = new QKeychain::DeletePasswordJob(kService);
    } else {
      auto* write = new QKeychain::WritePasswordJob(kService);
      write->setTextData(QString::fromStdString(secret));
      job = write;
    }
    job->setKey(key_);
    QObject::connect(job, &QKeychain::Job::finished, &context_, [job, tell] {
      const bool isWell =
          job->error() == QKeychain::NoError || job->error() == QKeychain::EntryNotFound;
      tell(isWell ? "" : job->errorString().toStdString());
    });
    job->start();
  }

 private:
  const char* key_;
  QObject context_;
};

}  // namespace

std::unique_ptr<SecretStore> NativeSecretStore(Secret which) {
  return std::make_unique<KeychainStore>(which);
}

}  // namespace brindle
