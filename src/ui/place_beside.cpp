#include "ui/place_beside.h"

#include <QScreen>
#include <algorithm>

#include "ui/look.h"

namespace brindle {
namespace {

constexpr int kOffset = 40;  // from the top left of the main window, when over it

}  // namespace

void PlaceBeside(QWidget& window, const QWidget& main) {
  const QRect screen = main.screen()->availableGeometry();
  const QRect frame = main.frameGeometry();
  window.resize(window.size().boundedTo(screen.size()));
  const int width = window.width() + kGap;
  QPoint place = frame.topLeft() + QPoint(kOffset, kOffset);
  if (frame.right() + width <= screen.right()) {
    place = QPoint(frame.right() + kGap, frame.top());
  } else if (frame.left() - width >= screen.left()) {
    place = QPoint(frame.left() - width, frame.top());
  }
  const QRect within = screen.adjusted(0, 0, -window.width(), -window.height());
  window.move(std::clamp(place.x(), within.left(), std::max(within.left(), within.right())),
              std::clamp(place.y(), within.top(), std::max(within.top(), within.bottom())));
}

}  // namespace brindle
