#pragma once
// Text colours that can be read: people in a room choose theirs for a background that is not ours.

#include "base/colour.h"

namespace brindle {

inline constexpr double kReadableContrast = 4.5;

// The contrast of two colours as the accessibility guidelines define it, 1 to 21.
double Contrast(Colour one, Colour other);

// `text` as it is, where its contrast to `background` is at least kReadableContrast; else with its
// lightness shifted as little as needed, lighter or darker, its hue kept. Remembers its answers;
// for the thread of the windows only.
Colour ReadableOn(Colour text, Colour background);

}  // namespace brindle
