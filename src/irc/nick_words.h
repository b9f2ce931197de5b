#pragma once
// Nicks as words of a line: whether a line says one, and what a begun one may become.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

// A names entry without the server's status marks ("@bob" is "bob").
std::string_view WithoutStatusMarks(std::string_view entry);

// True when `nick` stands in `text` as a word of its own, ignoring case.
bool Mentions(std::string_view text, std::string_view nick);

// Completes the nick before the cursor: asked again right after, it goes on to the next one that
// begins alike, in order of the alphabet, and back to what was typed after the last.
class NickCompletion {
 public:
  struct Typed {
    std::string text;
    size_t cursor = 0;  // bytes of `text` before it
    friend bool operator==(const Typed&, const Typed&) = default;
  };

  // Nothing when no entry of `names` begins with the word before the cursor, or there is no word.
  // The first word of a line gets ": " behind it, any other a blank.
  std::optional<Typed> Next(const Typed& typed, const std::vector<std::string>& names);

 private:
  Typed begun_;  // what the user typed
  Typed last_;   // what was answered
  std::vector<std::string> candidates_;
  size_t next_ = 0;
};

}  // namespace brindle
