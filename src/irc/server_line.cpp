#include "irc/server_line.h"

#include "base/text.h"

namespace brindle {

ServerLine::ServerLine(std::string_view received, bool addColon)
    : line_(std::string(received) + (addColon ? ":" : "")),
      receivedSize_(received.size()),
      words_(Split(line_, " ")) {}

std::string ServerLine::ColonRest(size_t index) const {
  if (index == 0) return line_;
  size_t begin = line_.find(':');
  for (size_t field = 1; begin != std::string::npos; ++field) {
    ++begin;
    if (field == index) return line_.substr(begin);
    const bool inSource = begin == 1 && !words_.empty();
    begin = line_.find(':', inSource ? words_.front().size() : begin);
  }
  return "";
}

std::string ServerLine::WordRest(size_t index) const { return JoinFrom(words_, index, " "); }

std::string ServerLine::Nick() const { return std::string(NickOf(Word(0))); }

std::string_view WithoutColon(std::string_view word) {
  if (word.starts_with(':')) word.remove_prefix(1);
  return word;
}

std::string_view NickOf(std::string_view source) {
  source = WithoutColon(source);
  return source.substr(0, source.find('!'));
}

}  // namespace brindle
