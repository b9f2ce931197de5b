#pragma once
// Whether the user has asked the desktop for light or dark windows, where the desktop says so in a
// way of its own; what it tells the toolkit is not asked for here.

#include <QObject>
#include <functional>

#include "base/desktop_scheme.h"

namespace brindle {

// Calls `tell` at once when there is an answer, and at each change as long as `owner` lives.
void WatchDesktopScheme(QObject& owner, std::function<void(DesktopScheme)> tell);

}  // namespace brindle
