#pragma once
// Menus that pop up under a button, and windows that come up when one is clicked.

#include <QAction>
#include <QMenu>
#include <QWidget>

namespace brindle {

// Shows `menu` with its top left corner at the bottom left of `button`, and returns at once.
inline void PopUpBelow(QMenu& menu, const QWidget& button) {
  menu.popup(button.mapToGlobal(QPoint(0, button.height())));
}

// Shows a window in front of the others, also one that was made small.
inline void BringUp(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

// Adds an item that runs `action`; `name` is its object name.
template <typename Action>
QAction* AddMenuItem(QMenu& menu, const char* name, const char* text, Action action) {
  QAction* item = menu.addAction(text);
  item->setObjectName(name);
  QObject::connect(item, &QAction::triggered, &menu, [action] { action(); });
  return item;
}

}  // namespace brindle
