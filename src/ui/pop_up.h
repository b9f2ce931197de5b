#pragma once
// Menus that pop up under a button, and windows that come up when one is clicked.

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QWidget>

namespace brindle {

// Shows `menu` with its top left corner at the bottom left of `button`, and returns at once.
inline void PopUpBelow(QMenu& menu, const QWidget& button) {
  menu.popup(button.mapToGlobal(QPoint(0, button.height())));
}

// Gives `button` its menu, and returns at once when it is clicked; the toolkit's own way stays in
// the click until the menu is closed.
inline void GiveMenu(QPushButton& button, QMenu& menu) {
  button.setMenu(&menu);
  QObject::disconnect(&button, &QPushButton::pressed, &button, nullptr);
  QObject::connect(&button, &QPushButton::clicked, &menu,
                   [&button, &menu] { PopUpBelow(menu, button); });
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
