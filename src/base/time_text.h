#pragma once
// Times and durations as the program shows them.

#include <cstdint>
#include <ctime>
#include <string>

namespace brindle {

// The time of day as "h:mmampm": hour 1 to 12 without leading zero, then "am" or "pm" ("3:07pm").
std::string ClockText(const std::tm& localTime);

enum class DurationStyle {
  kAltDhms,  // "1d:2h:03m:04s"; leading pieces that are zero are left out, seconds never
  kMs,       // "7m:05s"; minutes are not folded into hours; seconds alone below a minute ("5s")
};

// A duration in whole seconds; a negative one counts as 0.
std::string DurationText(std::int64_t seconds, DurationStyle style);

}  // namespace brindle
