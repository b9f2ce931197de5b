#include "settings/product_addresses.h"

#include "settings/product.h"

namespace brindle {

ProductAddresses ReadProductAddresses(const SettingsFile& settings) {
  return {settings.ReadSetting("product", "update", kUpdateAddress),
          settings.ReadSetting("product", "web", kWebAddress),
          settings.ReadSetting("product", "help", kHelpAddress)};
}

}  // namespace brindle
