#pragma once
// Twips, the unit of stored window sizes.

namespace brindle {

// Fixed on purpose: how many a screen really has to a pixel is not asked for.
inline constexpr int kTwipsPerPixel = 15;

}  // namespace brindle
