#pragma once
// What the product is called and where it lives on the web.

#include <string>

#include "settings/version.h"

namespace brindle {

// The product's web site, as told to other users.
inline constexpr const char* kWebAddress = "http://www.brindle.example";

// Where newer versions are looked for.
inline constexpr const char* kUpdateAddress = "https://update.brindle.example";

// The key that update lists are signed with, as docs/UPDATES.md says; empty while they are not.
inline constexpr const char* kUpdateKey = "";

// "0.5.85"
inline std::string VersionNumber() {
  return std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + "." +
         std::to_string(kVersionRevision);
}

// "Brindle v0.5.85"
inline std::string VersionText() { return "Brindle v" + VersionNumber(); }

}  // namespace brindle
