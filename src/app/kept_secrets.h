#pragma once
// The user's passwords while the program runs: what the system keeps, or what was typed since.

#include <array>
#include <functional>
#include <memory>
#include <string>

#include "base/secret_store.h"

namespace brindle {

class KeptSecrets {
 public:
  // `tell` is told when the system cannot keep a secret.
  explicit KeptSecrets(std::function<void(const std::string& trouble)> tell);

  // Asks the system for it. It is empty until the system answers.
  void Read(Secret which);
  // What was typed is known at once, and kept by the system from then on; nothing is forgotten.
  void Keep(Secret which, const std::string& text);
  const std::string& Text(Secret which) const { return Of(which).text; }

  // Waits until the system has kept what was typed, for some seconds at most.
  void Finish();

  // Calls `then` once the system has answered all that it was asked.
  void WhenRead(std::function<void()> then);

 private:
  struct Kept {
    std::unique_ptr<SecretStore> store;
    std::string text;
    bool isTyped = false;
    bool isAsked = false;  // and not answered
  };
  Kept& Of(Secret which) { return kept_[static_cast<size_t>(which)]; }
  const Kept& Of(Secret which) const { return kept_[static_cast<size_t>(which)]; }
  void CallWaiting();

  std::function<void(const std::string& trouble)> tell_;
  std::function<void()> waiting_;
  std::function<void()> whenKept_;
  int unkept_ = 0;  // writings that the system has not answered
  std::array<Kept, kSecrets> kept_;
};

}  // namespace brindle
