#include <gtest/gtest.h>

#include "app/kept_secrets.h"
#include "platform/native.h"
#include "support/wait.h"

namespace brindle {
namespace {

std::optional<std::string> Kept(Secret which = Secret::kAccountPassword) {
  const auto store = NativeSecretStore(which);
  std::optional<std::optional<std::string>> told;
  store->Read([&](std::optional<std::string> secret) { told = std::move(secret); });
  EXPECT_TRUE(test::WaitUntil([&] { return told.has_value(); }));
  return told.value_or(std::nullopt);
}

std::string Keep(const std::string& secret) {
  const auto store = NativeSecretStore(Secret::kAccountPassword);
  std::optional<std::string> told;
  store->Write(secret, [&](const std::string& trouble) { told = trouble; });
  EXPECT_TRUE(test::WaitUntil([&] { return told.has_value(); }));
  return told.value_or("nothing");
}

// On Linux run by itself, beside a keyring of its own.
TEST(SecretStore, KeepsOneSecret) {
  EXPECT_EQ(Keep(""), "");
  const auto other = Kept(Secret::kProxyPassword);
  for (const char* secret : {"first", "\u00FCber 'all' \"$HOME\""}) {
    EXPECT_EQ(Keep(secret), "");
    EXPECT_EQ(Kept(), secret);
    EXPECT_EQ(Kept(Secret::kProxyPassword), other);
  }
  EXPECT_EQ(Keep(""), "");
  EXPECT_EQ(Kept(), std::nullopt);
}

#ifndef _WIN32
TEST(SecretStore, SaysSoWhereTheSystemHasNone) {
  qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
  EXPECT_NE(Keep("secret"), "");
  EXPECT_EQ(Kept(), std::nullopt);
  // The end of the program waits for the answer.
  std::string trouble;
  KeptSecrets secrets([&trouble](const std::string& told) { trouble = told; });
  secrets.Keep(Secret::kAccountPassword, "typed");
  secrets.Finish();
  EXPECT_NE(trouble, "");
}
#endif

}  // namespace
}  // namespace brindle
