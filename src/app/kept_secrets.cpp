#include "app/kept_secrets.h"

#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/native.h"

namespace brindle {
namespace {

// The system may have to ask the user whether the keyring may be opened.
constexpr std::chrono::seconds kPatience{5};

}  // namespace

KeptSecrets::KeptSecrets(std::function<void(const std::string& trouble)> tell)
    : tell_(std::move(tell)) {
  for (size_t i = 0; i < kSecrets; ++i) kept_[i].store = NativeSecretStore(static_cast<Secret>(i));
}

void KeptSecrets::Read(Secret which) {
  Kept& kept = Of(which);
  kept.isAsked = true;
  kept.store->Read([this, &kept](const std::optional<std::string>& secret) {
    kept.isAsked = false;
    // What was typed meanwhile is newer.
    if (secret && !kept.isTyped) kept.text = *secret;
    CallWaiting();
  });
}

void KeptSecrets::Keep(Secret which, const std::string& text) {
  Kept& kept = Of(which);
  kept.text = text;
  kept.isTyped = true;
  ++unkept_;
  kept.store->Write(text, [this](const std::string& trouble) {
    --unkept_;
    if (!trouble.empty()) tell_(trouble);
    if (unkept_ == 0 && whenKept_) whenKept_();
  });
}

void KeptSecrets::Finish() {
  if (unkept_ == 0) return;
  QEventLoop loop;
  whenKept_ = [&loop] { loop.quit(); };
  QTimer::singleShot(kPatience, &loop, &QEventLoop::quit);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
  whenKept_ = nullptr;
}

void KeptSecrets::WhenRead(std::function<void()> then) {
  waiting_ = std::move(then);
  CallWaiting();
}

void KeptSecrets::CallWaiting() {
  const auto isAsked = [](const Kept& kept) { return kept.isAsked; };
  if (!waiting_ || std::any_of(kept_.begin(), kept_.end(), isAsked)) return;
  std::exchange(waiting_, nullptr)();
}

}  // namespace brindle
