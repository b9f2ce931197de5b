#include "irc/irc_line.h"

#include <algorithm>

#include "base/text.h"
#include "base/utf8.h"

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

std::string_view IrcLine::Text(size_t index) const {
  const std::string_view line = line_;
  const size_t mark = line.find(" :", first_[0].size());
  return mark == std::string_view::npos ? Word(index) : line.substr(mark + 2);
}

std::string IrcLine::WordRest(size_t index) const { return JoinFrom(AllWords(), index, " "); }

std::string IrcLine::Nick() const { return std::string(NickOf(first_[0])); }

std::vector<std::string_view> ParametersOf(std::string_view line) {
  std::vector<std::string_view> parameters;
  if (line.starts_with(':')) line.remove_prefix(std::min(line.find(' '), line.size()));
  while (true) {
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    if (line.empty()) return parameters;
    const bool isLast = line.starts_with(':') && !parameters.empty();
    if (isLast) line.remove_prefix(1);
    parameters.push_back(isLast ? line : line.substr(0, line.find(' ')));
    if (isLast) return parameters;
    line.remove_prefix(parameters.back().size());
  }
}

std::string_view WithoutColon(std::string_view word) {
  if (word.starts_with(':')) word.remove_prefix(1);
  return word;
}

std::string_view NickOf(std::string_view source) {
  source = WithoutColon(source);
  return source.substr(0, source.find('!'));
}

std::string PrivMsg(std::string_view target, std::string_view text) {
  return "PRIVMSG " + std::string(target) + " :" + std::string(text);
}

std::string Notice(std::string_view target, std::string_view text) {
  return "NOTICE " + std::string(target) + " :" + std::string(text);
}

std::string Join(std::string_view room) { return "JOIN " + std::string(room); }

std::string Part(std::string_view room) { return "PART " + std::string(room); }

std::string Nick(std::string_view nick) { return "NICK " + std::string(nick); }

std::string Pong(std::string_view token) { return "PONG :" + std::string(token); }

std::string_view FirstBytes(std::string_view text, size_t most) {
  return text.size() <= most ? text : text.substr(0, CharacterBegin(text, most));
}

std::vector<std::string_view> PiecesOf(std::string_view text, size_t most) {
  std::vector<std::string_view> pieces;
  while (text.size() > most) {
    std::string_view piece = FirstBytes(text, most);
    // Text that is no UTF-8 may offer no place between characters.
    if (piece.empty()) piece = text.substr(0, most);
    const size_t blank = piece.rfind(' ');
    if (blank != std::string_view::npos && blank > 0) piece = piece.substr(0, blank + 1);
    pieces.push_back(piece);
    text.remove_prefix(piece.size());
  }
  if (!text.empty()) pieces.push_back(text);
  return pieces;
}

}  // namespace brindle
