#include "settings/window_place.h"

#include <string>

namespace brindle {
namespace {

constexpr char kSection[] = "window";
constexpr long long kFarthest = 100'000;  // pixels from the first screen's corner

std::optional<int> ReadPixels(const SettingsText& settings, const char* key, long long least) {
  if (settings.Read(kSection, key).empty()) return std::nullopt;
  const long long value = settings.ReadNumber(kSection, key, "");
  if (value < least || value > kFarthest) return std::nullopt;
  return static_cast<int>(value);
}

}  // namespace

WindowPlace ReadWindowPlace(const SettingsText& settings) {
  WindowPlace place;
  const auto left = ReadPixels(settings, "left", -kFarthest);
  const auto top = ReadPixels(settings, "top", -kFarthest);
  const auto width = ReadPixels(settings, "width", 1);
  const auto height = ReadPixels(settings, "height", 1);
  if (left && top && width && height) place.rect = {*left, *top, *width, *height};
  place.maximised = settings.ReadNumber(kSection, "maximised", "0") == 1;
  place.side = ReadPixels(settings, "side", 0);
  place.channels = ReadPixels(settings, "channels", 1);
  place.room = ReadPixels(settings, "room", 1);
  place.tab = ReadPixels(settings, "tab", 0);
  return place;
}

void AppendWindowPlace(const WindowPlace& place, std::vector<Setting>& settings) {
  const auto append = [&settings](const char* key, std::optional<int> value) {
    if (value) settings.push_back({kSection, key, std::to_string(*value)});
  };
  if (place.rect) {
    append("left", place.rect->left);
    append("top", place.rect->top);
    append("width", place.rect->width);
    append("height", place.rect->height);
  }
  append("maximised", place.maximised ? 1 : 0);
  append("side", place.side);
  append("channels", place.channels);
  append("room", place.room);
  append("tab", place.tab);
}

}  // namespace brindle
