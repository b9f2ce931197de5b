#pragma once
// What is known about the safety of servers: the certificates that the user trusts although nobody
// else does, and the hosts that asked to be reached by TLS only (IRCv3 strict transport security).
// It is kept in the settings file and written at once.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/settings_file.h"

namespace brindle {

inline constexpr const char* kSecureServersSection = "secure servers";

class SecureServers {
 public:
  using Seconds = std::int64_t;  // since 1970-01-01 UTC
  // A host that asks for more is content with this: ten years.
  static constexpr Seconds kLongestWish = 315'360'000;

  // `settings` must outlive this.
  explicit SecureServers(SettingsFile& settings) : settings_(settings) {}

  // The SHA-256 fingerprint trusted for a server; empty when there is none. Hosts in any case.
  std::string Trusted(std::string_view host, int port) const;
  void Trust(std::string_view host, int port, const std::string& fingerprint);

  // The TLS port that `host` asked for, unless its wish has run out.
  std::optional<int> StrictPort(std::string_view host, Seconds now) const;
  // Keeps a wish for so long, at most kLongestWish; a duration of 0 forgets it.
  void SetStrict(std::string_view host, int port, Seconds duration, Seconds now);

 private:
  // Rows "key0", "key1" ... of words between blanks; the first word names the row.
  std::vector<std::string> Rows(const char* key) const;
  std::string Find(const char* key, const std::string& name) const;
  void Put(const char* key, const std::string& name, const std::string& rest);

  SettingsFile& settings_;
};

}  // namespace brindle
