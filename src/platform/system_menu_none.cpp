#include "platform/native.h"

namespace brindle {

// Window managers offer no way to change their menu.
void RemoveSizeCommand(std::uintptr_t) {}

}  // namespace brindle
