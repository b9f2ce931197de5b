#include "platform/desktop_scheme_native.h"

namespace brindle {

void WatchDesktopScheme(QObject&, std::function<void(DesktopScheme)>) {}

}  // namespace brindle
