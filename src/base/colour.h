#pragma once
// A colour as the program stores and compares it.

#include <cstdint>

namespace brindle {

struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Colour&, const Colour&) = default;
};

inline constexpr Colour kBlack{0, 0, 0};
inline constexpr Colour kWhite{255, 255, 255};
inline constexpr Colour kPureRed{255, 0, 0};

}  // namespace brindle
