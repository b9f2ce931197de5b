#pragma once
// The window's own system menu, where the machine has such a thing.

#include <cstdint>

#include "settings/start_up.h"

namespace brindle {

class NativeSystemMenu : public SystemMenu {
 public:
  // `window` is the native handle of the main window.
  explicit NativeSystemMenu(std::uintptr_t window) : window_(window) {}
  void RemoveSizeCommand() override;

 private:
  [[maybe_unused]] std::uintptr_t window_;
};

}  // namespace brindle
