#pragma once
// The windows of other programs on this machine; where there are none to look at, nothing is found.

#include <memory>

#include "aol/window_tree.h"

namespace brindle {

std::unique_ptr<WindowTree> NativeWindowTree();

}  // namespace brindle
