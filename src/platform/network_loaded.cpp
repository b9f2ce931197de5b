#include <QTimer>

#include "platform/modules.h"
#include "platform/network_module.h"

namespace brindle {
namespace {

constexpr char kModule[] = "brindle_network";
constexpr char kMissing[] =
    "A part of Brindle is missing, or has been updated meanwhile: start Brindle again.";

// Makes the real one for the first connection.
class LoadedChatSocket : public NetworkChatSocket {
 public:
  LoadedChatSocket() {
    failure_.setSingleShot(true);
    QObject::connect(&failure_, &QTimer::timeout, &failure_,
                     [this] { listener_->wsChat_Error(kMissing); });
  }

  void Connect(const ChatRoute& route) override {
    if (socket_ == nullptr) Load();
    socket_ == nullptr ? failure_.start(0) : socket_->Connect(route);
  }
  void Close() override {
    failure_.stop();
    if (socket_ != nullptr) socket_->Close();
  }
  void Send(std::string_view bytes) override {
    if (socket_ != nullptr) socket_->Send(bytes);
  }
  bool IsConnected() const override { return socket_ != nullptr && socket_->IsConnected(); }
  bool IsSecure() const override { return socket_ != nullptr && socket_->IsSecure(); }
  void Flush(int milliseconds) override {
    if (socket_ != nullptr) socket_->Flush(milliseconds);
  }

 private:
  void Load() {
    const auto make = FromModule<decltype(BrindleChatSocket)>(kModule, "BrindleChatSocket");
    if (make == nullptr) return;
    socket_.reset(make());
    socket_->SetListener(*listener_);
    socket_->SetProxyPassword(proxyPassword_);
  }

  std::unique_ptr<NetworkChatSocket> socket_;
  QTimer failure_;
};

// Stands for the real one where that is missing.
class NoHttpClient : public NetworkHttpClient {
 public:
  NoHttpClient() {
    failure_.setSingleShot(true);
    QObject::connect(&failure_, &QTimer::timeout, &failure_,
                     [this] { listener_(HttpState::kError); });
  }

  void SetConnection(const ConnectionOptions&, const std::string&) override {}
  void Execute(const std::string&) override { failure_.start(0); }
  std::string GetHeader(const std::string&) override { return ""; }
  std::optional<std::string> GetChunk(size_t) override { return std::nullopt; }
  void Cancel() override { failure_.stop(); }

 private:
  QTimer failure_;
};

}  // namespace

std::unique_ptr<NetworkChatSocket> NativeChatSocket() {
  return std::make_unique<LoadedChatSocket>();
}

std::unique_ptr<NetworkHttpClient> NativeHttpClient(int patienceMilliseconds) {
  const auto make = FromModule<decltype(BrindleHttpClient)>(kModule, "BrindleHttpClient");
  if (make == nullptr) return std::make_unique<NoHttpClient>();
  return std::unique_ptr<NetworkHttpClient>(make(patienceMilliseconds));
}

}  // namespace brindle
