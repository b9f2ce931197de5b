#include "base/time_text.h"

#include <algorithm>

namespace brindle {
namespace {

std::string TwoDigits(std::int64_t value) {
  return (value < 10 ? "0" : "") + std::to_string(value);
}

}  // namespace

std::string ClockText(const std::tm& localTime) {
  const int hour = localTime.tm_hour % 12 == 0 ? 12 : localTime.tm_hour % 12;
  // Every line of a room begins with it, so that it is put together without detours.
  std::string text = std::to_string(hour);
  text += ':';
  text += static_cast<char>('0' + localTime.tm_min / 10);
  text += static_cast<char>('0' + localTime.tm_min % 10);
  text += localTime.tm_hour < 12 ? "am" : "pm";
  return text;
}

std::string DurationText(std::int64_t seconds, DurationStyle style) {
  seconds = std::max<std::int64_t>(seconds, 0);
  std::int64_t minutes = seconds / 60;
  std::string text;
  const auto add = [&text](std::int64_t value, const char* unit) {
    if (text.empty() && value == 0) return;
    text += (text.empty() ? std::to_string(value) : TwoDigits(value)) + unit;
  };
  if (style == DurationStyle::kAltDhms) {
    if (seconds >= 86400) text = std::to_string(seconds / 86400) + "d:";
    const std::int64_t hours = seconds / 3600 % 24;
    if (!text.empty() || hours > 0) text += std::to_string(hours) + "h:";
    minutes %= 60;
  }
  add(minutes, "m:");
  const std::int64_t rest = seconds % 60;
  return text + (text.empty() ? std::to_string(rest) : TwoDigits(rest)) + "s";
}

}  // namespace brindle
