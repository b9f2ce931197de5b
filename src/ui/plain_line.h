#pragma once
// Keeps line ends and other control characters out of a single line of input, however they come: a
// pasted address may have a line end behind it.

#include <QLineEdit>
#include <QValidator>
#include <algorithm>

namespace brindle {

class PlainLine : public QValidator {
 public:
  // Watches over `field`, which owns this.
  explicit PlainLine(QLineEdit& field) : QValidator(&field) { field.setValidator(this); }

  State validate(QString& input, int& cursor) const override {
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    const auto end = input.begin() + std::min<qsizetype>(cursor, input.size());
    cursor -= static_cast<int>(std::count_if(input.begin(), end, isControl));
    input.removeIf(isControl);
    return Acceptable;
  }
};

}  // namespace brindle
