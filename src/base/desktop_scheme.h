#pragma once
// What the desktop wants its windows to be.

namespace brindle {

enum class DesktopScheme { kUnknown, kLight, kDark };

}  // namespace brindle
