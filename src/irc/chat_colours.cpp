#include "irc/chat_colours.h"

#include <array>
#include <optional>
#include <utility>

#include "base/text.h"

namespace brindle {
namespace {

constexpr char kColourMark = '\x03';
constexpr char kResetMark = '\x0F';
constexpr int kPlainColour = 1;
constexpr int kOrangeNumber = 7;
constexpr Colour kOrange{255, 125, 0};

constexpr std::array<int, 16> kBasicOfIrc = {15, 0, 1, 2, 12, 4, 5, 6, 14, 10, 3, 11, 9, 13, 8, 7};

constexpr std::array<Colour, 16> kConsolePalette = {{{0, 0, 0},
                                                     {0, 0, 128},
                                                     {0, 128, 0},
                                                     {0, 128, 128},
                                                     {128, 0, 0},
                                                     {128, 0, 128},
                                                     {128, 128, 0},
                                                     {192, 192, 192},
                                                     {128, 128, 128},
                                                     {0, 0, 255},
                                                     {0, 255, 0},
                                                     {0, 255, 255},
                                                     {255, 0, 0},
                                                     {255, 0, 255},
                                                     {255, 255, 0},
                                                     {255, 255, 255}}};

// The colour number at the start of `piece`, looked for in its first two characters with any comma,
// blank and hyphen passed over, and removed from it. Nothing when there is none.
std::optional<int> TakeColourNumber(std::string& piece) {
  const std::string two = RemoveChars(std::string_view(piece).substr(0, 2), ", -");
  const bool both = IsAllDigits(two);
  const std::string digits = both ? two : piece.substr(0, 1);
  if (!IsAllDigits(digits)) return std::nullopt;
  // What was passed over stays in the text: "5-nick-" keeps both hyphens.
  const size_t first = piece.find(digits.front());
  piece.erase(first, digits.size());
  return std::stoi(digits);
}

void DropBackgroundNumber(std::string& piece) {
  if (piece.size() < 2 || piece[0] != ',' || !IsAllDigits(piece.substr(1, 1))) return;
  std::string rest = piece.substr(1);
  TakeColourNumber(rest);
  piece = std::move(rest);
}

// The length of the UTF-8 line or paragraph separator (U+2028, U+2029) or next-line mark (U+0085)
// at `at`, else 0: a text view would break the line there.
size_t ForeignLineBreak(std::string_view text, size_t at) {
  const std::string_view rest = text.substr(at);
  if (rest.starts_with("\u2028") || rest.starts_with("\u2029")) return 3;
  return rest.starts_with("\u0085") ? 2 : 0;
}

// The length of something that must not reach a text view at all (NUL, U+FDD0, U+FDD1), else 0.
size_t Unshowable(std::string_view text, size_t at) {
  if (text[at] == '\0') return 1;
  const std::string_view rest = text.substr(at);
  return rest.starts_with("\uFDD0") || rest.starts_with("\uFDD1") ? 3 : 0;
}

std::vector<ColouredRun> OneRun(Colour colour, std::string text) {
  if (text.empty()) return {};
  return {{colour, std::move(text)}};
}

}  // namespace

std::string ShowableText(std::string_view text) {
  std::string shown;
  shown.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    if (text.substr(i).starts_with(kCrLf)) {
      shown += kCrLf;
      i += kCrLf.size();
    } else if (const size_t length = Unshowable(text, i); length > 0) {
      i += length;
    } else if (const size_t broken = ForeignLineBreak(text, i); broken > 0) {
      shown += ' ';
      i += broken;
    } else {
      const char c = text[i++];
      shown += c == '\r' || c == '\n' || c == '\v' || c == '\f' ? ' ' : c;
    }
  }
  return shown;
}

int IrcColorToBasic(int number) {
  if (number < 0 || number > 98) return 0;
  return kBasicOfIrc[static_cast<size_t>(number % 16)];
}

Colour BasicColour(int index) { return kConsolePalette[static_cast<size_t>(index)]; }

std::vector<ColouredRun> ColouredRuns(std::string_view text, Colour roomBackcolor,
                                      Colour roomForecolor) {
  const std::string shown = ShowableText(text);
  if (shown.find(kColourMark) == std::string::npos) return OneRun(kBlack, shown);
  std::vector<ColouredRun> runs;
  const std::string clean = RemoveChars(shown, std::string_view(&kResetMark, 1));
  for (std::string_view part : Split(clean, std::string_view(&kColourMark, 1))) {
    std::string piece(part);
    const std::optional<int> number = TakeColourNumber(piece);
    if (number) DropBackgroundNumber(piece);
    Colour colour = number == kOrangeNumber
                        ? kOrange
                        : BasicColour(IrcColorToBasic(number.value_or(kPlainColour)));
    if (colour == roomBackcolor) colour = roomForecolor;
    if (!piece.empty()) runs.push_back({colour, std::move(piece)});
  }
  return runs;
}

void ChatColours::Color_Response(std::string_view text, ChatTarget target) {
  View(target).Append(ColouredRuns(text, options_.roomBackcolor, options_.roomForecolor));
}

void ChatColours::Insert(std::string_view text, Colour colour, ChatTarget target) {
  View(target).Append(OneRun(colour, ShowableText(text)));
}

}  // namespace brindle
