#include "irc/chat_colours.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

#include "base/text.h"

namespace brindle {
namespace {

constexpr char kColourMark = '\x03';
constexpr std::string_view kResetMark = "\x0F";
constexpr char kHexColourMark = '\x04';
constexpr std::string_view kUnknownMarks = "\x01\x02\x04\x11\x16\x1D\x1E\x1F";
constexpr size_t kHexDigits = 6;
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

// The number at the start of `piece`, looked for in its first two characters with those of
// `passedOver` passed over, and removed from it. Nothing when there is none.
std::optional<int> TakeNumber(std::string& piece, std::string_view passedOver) {
  const std::string two = RemoveChars(std::string_view(piece).substr(0, 2), passedOver);
  const bool both = IsAllDigits(two);
  const std::string digits = both ? two : piece.substr(0, 1);
  if (!IsAllDigits(digits)) return std::nullopt;
  // What was passed over stays in the text: "5-nick-" keeps both hyphens.
  const size_t first = piece.find(digits.front());
  piece.erase(first, digits.size());
  return std::stoi(digits);
}

// The same for a colour, whose background is removed with it.
std::optional<int> TakeColour(std::string& piece, std::string_view passedOver) {
  const std::optional<int> number = TakeNumber(piece, passedOver);
  if (number && piece.starts_with(',') && IsAllDigits(piece.substr(1, 1))) {
    piece.erase(0, 1);
    TakeNumber(piece, passedOver);
  }
  return number;
}

// True for a byte with which something that is not shown as it is may begin.
bool IsDoubtful(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte == 0 || (byte >= '\n' && byte <= '\r') || byte == 0xC2 || byte == 0xE2 ||
         byte == 0xEF;
}

// Every line comes by here, with colours, and few hold a doubtful byte: eight bytes at a time while
// none of them is 0, from 8 to 0x0D (which become 0 to 5 where bit 3 is turned), or beyond ASCII.
bool MayHoldDoubtful(std::uint64_t eight) {
  constexpr std::uint64_t kOnes = 0x0101010101010101U;
  const std::uint64_t turned = eight ^ kOnes * 8;
  const std::uint64_t isZero = (eight - kOnes) & ~eight;
  const std::uint64_t isLineEnd = (turned - kOnes * 6) & ~turned;
  return ((isZero | isLineEnd | eight) & kOnes * 0x80) != 0;
}

size_t NextDoubtful(std::string_view text, size_t from) {
  for (std::uint64_t word = 0; from + sizeof word <= text.size(); from += sizeof word) {
    std::memcpy(&word, text.data() + from, sizeof word);
    if (!MayHoldDoubtful(word)) continue;
    const std::string_view eight = text.substr(from, sizeof word);
    const auto* found = std::find_if(eight.begin(), eight.end(), IsDoubtful);
    if (found != eight.end()) return from + static_cast<size_t>(found - eight.begin());
  }
  while (from < text.size() && !IsDoubtful(text[from])) ++from;
  return from;
}

// So many bytes of a text, and what stands for them in a view.
struct Shown {
  size_t length;
  std::string_view text;
};

Shown ShownAtStart(std::string_view text) {
  const char first = text.front();
  if (text.starts_with(kCrLf)) return {kCrLf.size(), kCrLf};
  if (first == '\0') return {1, ""};
  if (first >= '\n' && first <= '\r') return {1, " "};
  // Next line, line separator, paragraph separator: a view would break the line there.
  if (text.starts_with("\u0085")) return {2, " "};
  if (text.starts_with("\u2028") || text.starts_with("\u2029")) return {3, " "};
  // Two of Unicode's characters that are none; a view has uses of its own for them.
  if (text.starts_with("\uFDD0") || text.starts_with("\uFDD1")) return {3, ""};
  return {1, text.substr(0, 1)};
}

bool StartsWithHexColour(std::string_view text) {
  return text.size() >= kHexDigits &&
         text.substr(0, kHexDigits).find_first_not_of("0123456789abcdefABCDEF") ==
             std::string_view::npos;
}

// The length of the colour behind a mark for hexadecimal colours, with the background behind it.
size_t HexColourLength(std::string_view text) {
  if (!StartsWithHexColour(text)) return 0;
  const std::string_view behind = text.substr(kHexDigits);
  const bool background = behind.starts_with(',') && StartsWithHexColour(behind.substr(1));
  return background ? kHexDigits + 1 + kHexDigits : kHexDigits;
}

std::string WithoutMarks(std::string_view text) {
  return RemoveChars(WithoutFormatting(text), kResetMark);
}

std::vector<ColouredRun> OneRun(Colour colour, std::string text) {
  if (text.empty()) return {};
  return {{colour, std::move(text)}};
}

}  // namespace

std::string_view ShowableText(std::string_view text, std::string& changed) {
  changed.clear();
  size_t done = 0;
  for (size_t at = NextDoubtful(text, 0); at < text.size();) {
    const auto [length, shown] = ShownAtStart(text.substr(at));
    if (shown != text.substr(at, length)) {
      changed.append(text.substr(done, at - done)).append(shown);
      done = at + length;
    }
    at = NextDoubtful(text, at + length);
  }
  if (done == 0) return text;
  return changed.append(text.substr(done));
}

std::string WithoutFormatting(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  for (size_t at = 0; at < text.size();) {
    const char c = text[at++];
    if (kUnknownMarks.find(c) == std::string_view::npos) {
      plain += c;
    } else if (c == kHexColourMark) {
      at += HexColourLength(text.substr(at));
    }
  }
  return plain;
}

int IrcColorToBasic(int number) {
  if (number < 0 || number > 98) return 0;
  return kBasicOfIrc[static_cast<size_t>(number % 16)];
}

Colour BasicColour(int index) { return kConsolePalette[static_cast<size_t>(index)]; }

std::vector<ColouredRun> ColouredRuns(std::string_view text, const Options& options) {
  if (text.find(kColourMark) == std::string_view::npos) {
    return OneRun(kBlack, WithoutFormatting(text));
  }
  // To take the other marks out brings digits close to a colour mark that stood apart from it.
  const bool apart = options.keepDigitsApart;
  const std::string whole = apart ? std::string(text) : WithoutMarks(text);
  std::vector<ColouredRun> runs;
  bool behindMark = !apart;  // else the beginning of a text is a piece like the others
  for (std::string_view part : Split(whole, std::string_view(&kColourMark, 1))) {
    std::string piece(part);
    std::optional<int> number;
    if (behindMark) number = TakeColour(piece, apart ? "" : ", -");
    behindMark = true;
    if (apart) piece = WithoutMarks(piece);
    if (piece.empty()) continue;
    Colour colour = number == kOrangeNumber
                        ? kOrange
                        : BasicColour(IrcColorToBasic(number.value_or(kPlainColour)));
    if (colour == options.roomBackcolor) colour = options.roomForecolor;
    runs.push_back({colour, std::move(piece)});
  }
  return runs;
}

void Color_Response(std::string_view text, ChatView& view, const Options& options) {
  view.Append(ColouredRuns(text, options));
}

}  // namespace brindle
