#include "irc/chat_log_find.h"

#include <algorithm>
#include <string>

#include "base/text.h"
#include "base/utf8.h"

namespace brindle {
namespace {

constexpr size_t kNowhere = std::string_view::npos;

struct Hit {
  size_t begin = kNowhere;
  size_t end = kNowhere;
};

class LineFinder {
 public:
  explicit LineFinder(std::string_view text) : wanted_(LowerCase(text)), ascii_(IsAscii(wanted_)) {}

  // The first hit in `line` that begins at `from` or later.
  Hit Next(std::string_view line, size_t from) const {
    if (!ascii_) return InOther(line, from, FindDirection::kForward);
    for (size_t at = from; at + wanted_.size() <= line.size(); ++at) {
      if (IsAt(line, at)) return {at, at + wanted_.size()};
    }
    return {};
  }

  // The last hit in `line` that begins before `limit`.
  Hit LastBefore(std::string_view line, size_t limit) const {
    if (!ascii_) return InOther(line, limit, FindDirection::kBackward);
    if (line.size() < wanted_.size()) return {};
    for (size_t at = std::min(limit, line.size() - wanted_.size() + 1); at-- > 0;) {
      if (IsAt(line, at)) return {at, at + wanted_.size()};
    }
    return {};
  }

 private:
  static bool Same(char c, char lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
    return c == lower;
  }

  // Right beside characters beyond ASCII too: all their bytes have the top bit set.
  bool IsAt(std::string_view line, size_t at) const {
    if (!Same(line[at], wanted_.front())) return false;
    for (size_t i = 1; i < wanted_.size(); ++i) {
      if (!Same(line[at + i], wanted_[i])) return false;
    }
    return true;
  }

  // The lower-case form may have other byte lengths, but has as many characters.
  Hit InOther(std::string_view line, size_t from, FindDirection direction) const {
    if (IsAscii(line)) return {};
    const std::string lower = LowerCase(line);
    const size_t start = OffsetOfCharacter(lower, CharacterCount(line.substr(0, from)));
    size_t at = kNowhere;
    if (direction == FindDirection::kForward) {
      at = lower.find(wanted_, start);
    } else if (start > 0) {
      at = lower.rfind(wanted_, start - 1);
    }
    if (at == kNowhere) return {};
    const size_t before = CharacterCount(std::string_view(lower).substr(0, at));
    const size_t begin = OffsetOfCharacter(line, before);
    return {begin, begin + OffsetOfCharacter(line.substr(begin), CharacterCount(wanted_))};
  }

  std::string wanted_;
  bool ascii_;
};

std::optional<LogRange> RangeOf(size_t line, Hit hit) {
  if (hit.begin == kNowhere) return std::nullopt;
  return LogRange{{line, hit.begin}, {line, hit.end}};
}

}  // namespace

std::optional<LogRange> FindInLog(const ChatLog& log, std::string_view text, LogPosition from,
                                  FindDirection direction) {
  if (text.empty()) return std::nullopt;
  const LineFinder finder(text);
  const size_t count = log.LineCount();
  // The line of `from` is looked at twice: first its one side, at last the whole of it.
  for (size_t step = 0; step <= count; ++step) {
    const bool first = step == 0;
    if (direction == FindDirection::kForward) {
      const size_t line = (from.line + step) % count;
      const auto hit = RangeOf(line, finder.Next(log.Line(line), first ? from.byte : 0));
      if (hit) return hit;
    } else {
      const size_t line = (from.line + count - step) % count;
      const auto hit =
          RangeOf(line, finder.LastBefore(log.Line(line), first ? from.byte : kNowhere));
      if (hit) return hit;
    }
  }
  return std::nullopt;
}

}  // namespace brindle
