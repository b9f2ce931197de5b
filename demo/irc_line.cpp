#include "irc_line.h"

#include <algorithm>

namespace demo {

namespace {

// A peer that sends this much without a line end is not speaking the protocol.
constexpr size_t kLongestLine = 16384;

// Takes the next word off the front of `rest`, with the blanks that follow it.
std::string TakeWord(std::string_view& rest) {
  const size_t end = std::min(rest.find(' '), rest.size());
  std::string word(rest.substr(0, end));
  const size_t next = rest.find_first_not_of(' ', end);
  rest.remove_prefix(next == std::string_view::npos ? rest.size() : next);
  return word;
}

}  // namespace

const std::string& IrcLine::Parameter(size_t index) const {
  static const std::string kNone;
  return index < parameters.size() ? parameters[index] : kNone;
}

IrcLine ParseIrcLine(std::string_view line) {
  IrcLine result;
  if (line.starts_with(':')) {
    line.remove_prefix(1);
    const std::string prefix = TakeWord(line);
    result.nick = prefix.substr(0, prefix.find('!'));
  }
  result.command = TakeWord(line);
  while (!line.empty()) {
    if (line.starts_with(':')) {
      result.parameters.emplace_back(line.substr(1));
      break;
    }
    result.parameters.push_back(TakeWord(line));
  }
  return result;
}

void LineReader::Feed(std::string_view bytes) {
  pending_.append(bytes);
  if (pending_.size() > kLongestLine && pending_.find('\n') == std::string::npos) pending_.clear();
}

std::optional<std::string> LineReader::Next() {
  const size_t end = pending_.find('\n');
  if (end == std::string::npos) return std::nullopt;
  std::string line = pending_.substr(0, end);
  pending_.erase(0, end + 1);
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

std::string LowerAscii(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

}  // namespace demo
