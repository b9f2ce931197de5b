#pragma once
// A label of one line that shows as much of its text as there is room for, and all of it in its
// tool tip.

#include <QLabel>
#include <QPainter>

namespace brindle {

class ElidedLabel : public QLabel {
 public:
  explicit ElidedLabel(QWidget* parent = nullptr) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  }

  void ShowText(const QString& text) {
    setText(text);
    setToolTip(text.isEmpty() ? QString() : "<span>" + text.toHtmlEscaped() + "</span>");
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
    painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, shown);
  }
};

}  // namespace brindle
