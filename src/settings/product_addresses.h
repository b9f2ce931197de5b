#pragma once
// Where the product lives on the web: the built-in addresses, or those that section "product" of
// the settings file names instead, for those who run a server of their own.

#include <string>

#include "settings/settings_file.h"

namespace brindle {

struct ProductAddresses {
  std::string update;  // key "update": an http or https address, or a host for http
  std::string web;     // key "web": what the help page's web link opens
  std::string help;    // key "help"; the shipped help page needs no network
};

ProductAddresses ReadProductAddresses(const SettingsFile& settings);

}  // namespace brindle
