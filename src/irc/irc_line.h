#pragma once
// Lines of the IRC protocol. RFC 1459, section 2.3.1 gives the form: an optional ":source", a
// command, parameters, and a last parameter that may hold blanks after " :".

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

// Bytes of a line without its CR LF, as a server takes and sends them (RFC 1459, section 2.3).
inline constexpr size_t kLongestLine = 510;

// A line from the server, cut into words (at single blanks) and fields (at colons).
class IrcLine {
 public:
  // The line as received, without its line end; `addColon` puts a colon behind it.
  explicit IrcLine(std::string_view received, bool addColon = false);
  IrcLine(const IrcLine&) = delete;
  IrcLine& operator=(const IrcLine&) = delete;

  const std::string& Line() const { return line_; }
  // The line without the colon that was put behind it.
  std::string_view Received() const { return std::string_view(line_).substr(0, receivedSize_); }
  size_t WordCount() const { return AllWords().size(); }
  // True when there are at least `count` words; does not need to cut a long line to its end.
  bool HasWords(size_t count) const {
    return count <= kFirstWords ? count <= firstWords_ : count <= WordCount();
  }
  // The word at `index` (0 is the source, 1 the command); empty when there is none.
  std::string_view Word(size_t index) const;
  // The fields from `index` on, joined again with ":"; points into the line. Field 2 of a line with
  // a source is its trailing text. Colons inside the source (an IPv6 host) do not start a field.
  std::string_view ColonRest(size_t index) const;
  // The last parameter of a line whose text is its word `index`: what follows " :" or, where the
  // server left out the colon before a single word, that word.
  std::string_view Text(size_t index) const;
  // The words from `index` on, joined again with blanks.
  std::string WordRest(size_t index) const;
  // The nick that the line comes from.
  std::string Nick() const;

 private:
  // Chat lines are understood by their first words, and nobody wants the others by themselves.
  static constexpr size_t kFirstWords = 5;

  const std::vector<std::string_view>& AllWords() const;

  std::string line_;
  size_t receivedSize_;
  std::array<std::string_view, kFirstWords> first_;
  size_t firstWords_ = 0;
  mutable std::vector<std::string_view> words_;  // cut when somebody asks
};

// The command and the parameters of a line, without its source, cut as RFC 1459, section 2.3.1
// says: by runs of blanks, the last one whole.
std::vector<std::string_view> ParametersOf(std::string_view line);

// `word` without one leading colon: servers may send any last parameter with one.
std::string_view WithoutColon(std::string_view word);

// The nick in a source word ":nick!user@host"; a source without "!" is the name as it stands.
std::string_view NickOf(std::string_view source);

// The lines that the program sends.
std::string PrivMsg(std::string_view target, std::string_view text);
std::string Notice(std::string_view target, std::string_view text);
std::string Join(std::string_view room);
std::string Part(std::string_view room);
std::string Nick(std::string_view nick);
std::string Pong(std::string_view token);

// The first bytes of `text`, at most `most` of them, ending between two characters.
std::string_view FirstBytes(std::string_view text, size_t most);

// Cuts `text` into pieces of at most `most` bytes: at a blank, which stays with the piece before
// it, where there is one, else between two characters. REQUIRES: most >= 4.
std::vector<std::string_view> PiecesOf(std::string_view text, size_t most);

}  // namespace brindle
