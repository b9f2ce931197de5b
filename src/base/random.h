#pragma once

#include <chrono>
#include <random>

namespace brindle {

// A whole number from `low` to `high` inclusive. The generator is seeded from the clock before each
// draw: good enough for nicks, never for secrets. REQUIRES: low <= high.
inline int RandomBetween(int low, int high) {
  const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
  std::minstd_rand generator(static_cast<std::minstd_rand::result_type>(now ^ (now >> 17)));
  generator.discard(3);
  return std::uniform_int_distribution<int>(low, high)(generator);
}

}  // namespace brindle
