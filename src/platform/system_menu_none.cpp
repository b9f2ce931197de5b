#include "platform/system_menu_native.h"

namespace brindle {

// Window managers offer no way to change their menu.
void NativeSystemMenu::RemoveSizeCommand() {}

}  // namespace brindle
