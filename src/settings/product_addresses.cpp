#include "settings/product_addresses.h"

#include "settings/product.h"

namespace brindle {

namespace {

std::string HostOf(const std::string& address) {
  const size_t scheme = address.find("://");
  const size_t begin = scheme == std::string::npos ? 0 : scheme + 3;
  return address.substr(begin, address.find('/', begin) - begin);
}

}  // namespace

ProductAddresses ReadProductAddresses(const SettingsFile& settings) {
  const std::string web = settings.ReadSetting("product", "web", kWebAddress);
  return {settings.ReadSetting("product", "update", kUpdateAddress),
          settings.ReadSetting("product", "update key", kUpdateKey), web, HostOf(web)};
}

}  // namespace brindle
