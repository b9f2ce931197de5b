#pragma once
// Between the program's texts and colours and the toolkit's.

#include <QColor>
#include <QString>
#include <string_view>

#include "base/colour.h"

namespace brindle {

inline QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline QColor ToQColor(Colour colour) { return {colour.red, colour.green, colour.blue}; }

inline Colour FromQColor(const QColor& colour) {
  const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
  return {byte(colour.red()), byte(colour.green()), byte(colour.blue())};
}

}  // namespace brindle
