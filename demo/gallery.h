#pragma once
// The gallery: a picture of every tab, page and window, light and dark, small and large. What is on
// them is what the window holds at the time.

#include <QDir>

#include "support/window_driver.h"

namespace brindle::demo {

// Saves the pictures in `folder`, which must exist. Leaves the window light and on its last tab.
void PhotographEverything(test::WindowDriver& window, const QDir& folder);

}  // namespace brindle::demo
