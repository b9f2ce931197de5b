#pragma once
// Where a second window opens.

#include <QWidget>

namespace brindle {

// Moves `window`, which has its size and is not shown yet, beside `main` where the screen has room,
// else over it. Never beyond the screen.
void PlaceBeside(QWidget& window, const QWidget& main);

}  // namespace brindle
