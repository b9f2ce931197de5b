#include "app/product_addresses.h"

#include "app/product.h"

namespace brindle {

ProductAddresses ReadProductAddresses(const SettingsFile& settings) {
  return {settings.ReadSetting("product", "update", kUpdateAddress),
          settings.ReadSetting("product", "web", kWebAddress),
          settings.ReadSetting("product", "help", kHelpAddress)};
}

}  // namespace brindle
