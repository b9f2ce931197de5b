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

// Of a colour mark that begins `text`: the digits behind it are not those of a word.
size_t ColourMarkLength(std::string_view text) {
  constexpr size_t kMostDigits = 2;
  if (!text.starts_with('\x03')) return 0;
  size_t length = 1;
  while (length < text.size() && length <= kMostDigits && text[length] >= '0' &&
         text[length] <= '9') {
    ++length;
  }
  return length;
}

}  // namespace

std::string_view WithoutStatusMarks(std::string_view entry) {
  return entry.substr(std::min(entry.find_first_not_of("@+%&~"), entry.size()));
}

bool Mentions(std::string_view text, std::string_view nick) {
  if (nick.empty()) return false;
  // Words are few beside bytes, and nothing is copied for those of another length.
  for (size_t begin = 0; begin < text.size();) {
    begin += ColourMarkLength(text.substr(begin));
    size_t end = begin;
    while (end < text.size() && IsNickByte(text[end])) ++end;
    if (end - begin == nick.size() && EqualsIgnoringCase(text.substr(begin, nick.size()), nick)) {
      return true;
    }
    begin = end + 1;
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
