#pragma once
// Fields that hold one line: what is pasted into them may hold more.

#include <QLineEdit>
#include <QString>
#include <algorithm>

namespace brindle {

// `text` without line ends and other control characters.
inline QString WithoutControls(QString text) {
  text.removeIf([](QChar c) {
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
  });
  return text;
}

// Takes line ends and other control characters out of whatever comes into `field`.
inline void KeepOneLine(QLineEdit& field) {
  QObject::connect(&field, &QLineEdit::textChanged, &field, [&field](const QString& text) {
    const QString clean = WithoutControls(text);
    if (clean == text) return;
    const auto lost = text.size() - clean.size();
    const auto cursor = field.cursorPosition() - static_cast<int>(lost);
    field.setText(clean);
    field.setCursorPosition(std::max(0, cursor));
  });
}

}  // namespace brindle
