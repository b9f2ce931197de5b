#include "ui/readable_colour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <unordered_map>

namespace brindle {
namespace {

// Enough for lightness to be exact to less than a step of a colour's eight bits.
constexpr int kHalvings = 10;
constexpr double kFullByte = 255.0;
// Lines in more colours than this are no conversation; the answers are found anew then.
constexpr size_t kMostRemembered = 4096;

double Linear(std::uint8_t channel) {
  const double value = channel / kFullByte;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(Colour colour) {
  return 0.2126 * Linear(colour.red) + 0.7152 * Linear(colour.green) + 0.0722 * Linear(colour.blue);
}

double Lightness(Colour colour) {
  const auto [least, most] = std::minmax({colour.red, colour.green, colour.blue});
  return (least + most) / (2 * kFullByte);
}

// The colour of the same hue and saturation: the channels keep the ratio of their distances from
// grey, which go as far as lightness lets them.
Colour WithLightness(Colour colour, double lightness) {
  const double now = Lightness(colour);
  const double room = 1 - std::abs(2 * now - 1);
  const double scale = room == 0 ? 0 : (1 - std::abs(2 * lightness - 1)) / room;
  const auto channel = [&](std::uint8_t value) {
    const double moved = lightness + (value / kFullByte - now) * scale;
    return static_cast<std::uint8_t>(std::lround(std::clamp(moved, 0.0, 1.0) * kFullByte));
  };
  return {channel(colour.red), channel(colour.green), channel(colour.blue)};
}

// The readable colour nearest to `text` on the way to `end`, which is black (0) or white (1); that
// end itself where nothing on the way is readable.
Colour TowardsEnd(Colour text, Colour background, double end) {
  double unreadable = Lightness(text);
  double readable = end;
  for (int i = 0; i < kHalvings; ++i) {
    const double middle = (unreadable + readable) / 2;
    const bool reads = Contrast(WithLightness(text, middle), background) >= kReadableContrast;
    (reads ? readable : unreadable) = middle;
  }
  return WithLightness(text, readable);
}

Colour Shifted(Colour text, Colour background) {
  const Colour lighter = TowardsEnd(text, background, 1);
  const Colour darker = TowardsEnd(text, background, 0);
  // On any background one of the two can be read.
  if (Contrast(lighter, background) < kReadableContrast) return darker;
  if (Contrast(darker, background) < kReadableContrast) return lighter;
  const double now = Lightness(text);
  return Lightness(lighter) - now < now - Lightness(darker) ? lighter : darker;
}

std::uint64_t Key(Colour text, Colour background) {
  std::uint64_t key = 0;
  for (std::uint8_t byte :
       {text.red, text.green, text.blue, background.red, background.green, background.blue}) {
    key = key << 8U | byte;
  }
  return key;
}

}  // namespace

double Contrast(Colour one, Colour other) {
  constexpr double kFlare = 0.05;
  const auto [dark, light] = std::minmax({Luminance(one), Luminance(other)});
  return (light + kFlare) / (dark + kFlare);
}

Colour ReadableOn(Colour text, Colour background) {
  static std::unordered_map<std::uint64_t, Colour> remembered;
  if (remembered.size() >= kMostRemembered) remembered.clear();
  const auto [found, isNew] = remembered.try_emplace(Key(text, background), text);
  if (isNew && Contrast(text, background) < kReadableContrast) {
    found->second = Shifted(text, background);
  }
  return found->second;
}

}  // namespace brindle
