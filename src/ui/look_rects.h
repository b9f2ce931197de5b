#pragma once
// Where the parts of the style's controls lie, in the coordinates of their option.

#include <QStyle>
#include <QStyleOptionComplex>

namespace brindle {

inline constexpr int kScrollBarWidth = 10;
inline constexpr int kFieldInset = 8;

// Buttons and fields have one height, so that they stand in one line.
int ControlHeight(const QStyleOption& option);

QRect ComboBoxPart(const QStyleOptionComboBox& option, QStyle::SubControl part);
QRect SpinBoxPart(const QStyleOptionSpinBox& option, QStyle::SubControl part);
// `metrics` are those of the title's font.
QRect GroupBoxPart(const QStyleOptionGroupBox& option, QStyle::SubControl part,
                   const QFontMetrics& metrics);
QRect ScrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part, int leastSlider);

// What a scroll bar stands on.
QColor PageColour(const QWidget* widget);

}  // namespace brindle
