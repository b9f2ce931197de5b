#pragma once
// What the demo bot understands of the wire: bytes cut into lines, a line cut into its parts. It is
// written apart from the client's own parser on purpose, so that a fault there is not repeated
// here.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace demo {

struct IrcLine {
  std::string nick;  // the sender up to "!"; a server's name, or empty when the line has no prefix
  std::string command;
  std::vector<std::string> parameters;  // the last one without its colon

  // The parameter at `index`, or an empty text when the line has fewer.
  const std::string& Parameter(size_t index) const;
};

// REQUIRES: `line` carries no line end.
IrcLine ParseIrcLine(std::string_view line);

// Joins what arrives in pieces and hands out whole lines, without their line ends.
class LineReader {
 public:
  void Feed(std::string_view bytes);
  std::optional<std::string> Next();

 private:
  std::string pending_;
};

// ASCII lower case; other bytes stay as they are.
std::string LowerAscii(std::string_view text);

}  // namespace demo
