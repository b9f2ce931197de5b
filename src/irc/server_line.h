#pragma once
// One line from the server, cut into words (at single blanks) and fields (at colons). RFC 1459,
// section 2.3.1 gives the form: an optional ":source", a command, parameters, and a last parameter
// that may hold blanks after " :".

#include <string>
#include <string_view>
#include <vector>

namespace brindle {

class ServerLine {
 public:
  // The line as received, without its line end; `addColon` puts a colon behind it.
  explicit ServerLine(std::string_view received, bool addColon = false);
  ServerLine(const ServerLine&) = delete;
  ServerLine& operator=(const ServerLine&) = delete;

  const std::string& Line() const { return line_; }
  // The line without the colon that was put behind it.
  std::string_view Received() const { return std::string_view(line_).substr(0, receivedSize_); }
  size_t WordCount() const { return words_.size(); }
  // The word at `index` (0 is the source, 1 the command); empty when there is none.
  std::string_view Word(size_t index) const {
    return index < words_.size() ? words_[index] : std::string_view();
  }
  // The fields from `index` on, joined again with ":". Field 2 of a line with a source is its
  // trailing text. Colons inside the source (an IPv6 host) do not start a field.
  std::string ColonRest(size_t index) const;
  // The words from `index` on, joined again with blanks.
  std::string WordRest(size_t index) const;
  // The nick that the line comes from.
  std::string Nick() const;

 private:
  std::string line_;
  size_t receivedSize_;
  std::vector<std::string_view> words_;
};

// `word` without one leading colon: servers may send any last parameter with one.
std::string_view WithoutColon(std::string_view word);

// The nick in a source word ":nick!user@host"; a source without "!" is the name as it stands.
std::string_view NickOf(std::string_view source);

}  // namespace brindle
