#include "irc/nick_words.h"

#include <algorithm>

#include "base/text.h"

namespace brindle {
namespace {

// Letters, digits and the special characters of nicks (RFC 2812, section 2.3.1), and every byte of
// a character beyond ASCII.
bool IsNickByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 0x80 || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= '}') ||
         byte == '-';
}

// True where the digits of a colour mark end: they are none of a word.
bool IsAfterColourMark(std::string_view text, size_t at) {
  constexpr size_t kMostDigits = 2;
  size_t begin = at;
  while (begin > 0 && at - begin < kMostDigits && text[begin - 1] >= '0' &&
         text[begin - 1] <= '9') {
    --begin;
  }
  return begin > 0 && text[begin - 1] == '\x03';
}

bool BeginsWord(std::string_view text, size_t at) {
  return at == 0 || !IsNickByte(text[at - 1]) || IsAfterColourMark(text, at);
}

}  // namespace

std::string_view WithoutStatusMarks(std::string_view entry) {
  return entry.substr(std::min(entry.find_first_not_of("@+%&~"), entry.size()));
}

bool Mentions(std::string_view text, std::string_view nick) {
  if (nick.empty()) return false;
  // Every line is asked, so few bytes may cost more than one look: letters differ in one bit by
  // their case.
  constexpr char kCaseBit = 0x20;
  const char first = static_cast<char>(nick.front() | kCaseBit);
  for (size_t at = 0; at + nick.size() <= text.size(); ++at) {
    if (static_cast<char>(text[at] | kCaseBit) != first || !BeginsWord(text, at)) continue;
    const size_t end = at + nick.size();
    const bool ends = end == text.size() || !IsNickByte(text[end]);
    if (ends && EqualsIgnoringCase(text.substr(at, nick.size()), nick)) return true;
  }
  return false;
}

std::optional<NickCompletion::Typed> NickCompletion::Next(const Typed& typed,
                                                          const std::vector<std::string>& names) {
  if (candidates_.empty() || typed != last_) {
    begun_ = typed;
    next_ = 0;
    candidates_.clear();
    const std::string_view before = std::string_view(typed.text).substr(0, typed.cursor);
    const std::string begun = LowerCase(before.substr(before.rfind(' ') + 1));
    if (begun.empty()) return std::nullopt;
    for (const std::string& name : names) {
      const std::string_view nick = WithoutStatusMarks(name);
      if (LowerCase(nick).starts_with(begun)) candidates_.emplace_back(nick);
    }
    if (candidates_.empty()) return std::nullopt;
    std::sort(
        candidates_.begin(), candidates_.end(),
        [](const std::string& a, const std::string& b) { return LowerCase(a) < LowerCase(b); });
  }
  if (next_ == candidates_.size()) {
    next_ = 0;
    return last_ = begun_;
  }
  const size_t word = std::string_view(begun_.text).substr(0, begun_.cursor).rfind(' ') + 1;
  const std::string& nick = candidates_[next_++];
  last_.text = begun_.text.substr(0, word) + nick + (word == 0 ? ": " : " ");
  last_.cursor = last_.text.size();
  last_.text += TrimBlanks(std::string_view(begun_.text).substr(begun_.cursor));
  return last_;
}

}  // namespace brindle
