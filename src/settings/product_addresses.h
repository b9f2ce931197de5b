#pragma once
// Where the product lives on the web: the built-in addresses, or those that section "product" of
// the settings file names instead, for those who run a server of their own.

#include <string>

#include "settings/settings_file.h"

namespace brindle {

struct ProductAddresses {
  std::string update;   // key "update": an http or https address, or a host for http
  std::string key;      // key "update key": what update lists are signed with; may be empty
  std::string web;      // key "web": the web site, as links open it
  std::string webHost;  // the same as people are told: without scheme and what is behind the host
};

ProductAddresses ReadProductAddresses(const SettingsFile& settings);

}  // namespace brindle
