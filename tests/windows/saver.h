#pragma once
// What the test program does when it is started by one of its tests.

#include <string>

namespace brindle::test {

// The argument before a path: saves there over and over, and says a byte after each time.
inline constexpr const char* kSaveOverAndOver = "--save-over-and-over";

// Any mixing of two contents shows: each is one letter, over several blocks.
inline std::string SavedContent(int round) {
  return std::string(static_cast<size_t>(100000 + round), static_cast<char>('a' + round));
}

}  // namespace brindle::test
