#include "irc/irc_line.h"

#include <algorithm>

#include "base/text.h"

namespace brindle {

IrcLine::IrcLine(std::string_view received, bool addColon) : receivedSize_(received.size()) {
  line_.reserve(received.size() + 1);
  line_ = received;
  if (addColon) line_ += ':';
  const std::string_view line = line_;
  size_t begin = 0;
  while (firstWords_ < kFirstWords && begin <= line.size()) {
    const size_t end = std::min(line.find(' ', begin), line.size());
    first_[firstWords_++] = line.substr(begin, end - begin);
    begin = end + 1;
  }
}

std::string_view IrcLine::Word(size_t index) const {
  if (index < kFirstWords) return first_[index];
  return index < AllWords().size() ? words_[index] : std::string_view();
}

const std::vector<std::string_view>& IrcLine::AllWords() const {
  if (words_.empty()) words_ = Split(line_, " ");
  return words_;
}

std::string_view IrcLine::ColonRest(size_t index) const {
  const std::string_view line = line_;
  if (index == 0) return line;
  size_t begin = line.find(':');
  for (size_t field = 1; begin != std::string_view::npos; ++field) {
    ++begin;
    if (field == index) return line.substr(begin);
    const bool inSource = begin == 1;
    begin = line.find(':', inSource ? first_[0].size() : begin);
  }
  return "";
}

std::string IrcLine::WordRest(size_t index) const { return JoinFrom(AllWords(), index, " "); }

std::string IrcLine::Nick() const { return std::string(NickOf(first_[0])); }

std::string_view WithoutColon(std::string_view word) {
  if (word.starts_with(':')) word.remove_prefix(1);
  return word;
}

std::string_view NickOf(std::string_view source) {
  source = WithoutColon(source);
  return source.substr(0, source.find('!'));
}

}  // namespace brindle
