#pragma once
// Ends a program as soon as its window has been painted for the first time: what "started" means.

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

namespace brindle {

class EndAtFirstPaint : public QObject {
 public:
  explicit EndAtFirstPaint(QWidget& window) { window.installEventFilter(this); }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) QTimer::singleShot(0, qApp, &QApplication::quit);
    return false;
  }
};

}  // namespace brindle
