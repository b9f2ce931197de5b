#pragma once
// The tags in front of a line (IRCv3, "message-tags"): "@key=value;key " before its source. They
// are cut off before the line is parsed, and never shown.

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace brindle {

class MessageTags {
 public:
  // With the "@" in front and the blank behind.
  static constexpr size_t kMostBytes = 8191;

  MessageTags() = default;
  // Cuts the tags off the front of `line`. Tags beyond all bounds are cut off and forgotten.
  static MessageTags CutFrom(std::string_view& line);

  // The value of the last tag of that name, its escapes undone; empty when there is none.
  std::string Value(std::string_view key) const;

 private:
  std::string_view tags_;  // points into the line
};

// The local time of a moment "2026-11-21T15:07:01.123Z" (IRCv3, "server-time"); nothing for
// anything else.
std::optional<std::tm> LocalTimeOf(std::string_view moment);

}  // namespace brindle
