#pragma once
// The lines and arcs of a drawing.

#include <QPainterPath>
#include <QStringView>
#include <optional>

namespace brindle {

// What the attribute `d` of an SVG path says; nothing when it is wrong, or uses curves or ellipses
// that none of our drawings has.
std::optional<QPainterPath> ReadDrawingPath(QStringView text);

}  // namespace brindle
