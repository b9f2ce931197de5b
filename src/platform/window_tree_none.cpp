#include "platform/native.h"

namespace brindle {
namespace {

class NoWindows : public WindowTree {
 public:
  Window FindTopLevel(const std::string&) override { return 0; }
  Window FindChild(Window, Window, const std::string&, const std::optional<std::string>&) override {
    return 0;
  }
  std::string Caption(Window) override { return ""; }
};

}  // namespace

std::unique_ptr<WindowTree> NativeWindowTree() { return std::make_unique<NoWindows>(); }

}  // namespace brindle
