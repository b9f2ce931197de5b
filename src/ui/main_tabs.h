#pragma once
// The tabs of the main window. Only the page in sight says how small they may become: the others
// need not be measured before they are shown.

#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>

#include "ui/look_paint.h"

namespace brindle {

class MainTabs : public QTabWidget {
 public:
  explicit MainTabs(QWidget* parent) : QTabWidget(parent) {
    // The current tab stands out; the others are drawn lighter, in the same room.
    tabBar()->setFont(Medium(tabBar()->font()));
    connect(this, &QTabWidget::currentChanged, this, &QWidget::updateGeometry);
    // It gets its size from here: it need not find one that fits all pages when it is shown.
    findChild<QStackedWidget*>()->setAttribute(Qt::WA_Resized);
  }
  QSize sizeHint() const override { return minimumSizeHint(); }
  QSize minimumSizeHint() const override {
    const QSize bar = tabBar()->minimumSizeHint();
    const QSize page = currentWidget() == nullptr ? QSize() : currentWidget()->minimumSizeHint();
    return {std::max(bar.width(), page.width()), bar.height() + page.height()};
  }
};

}  // namespace brindle
