#pragma once
// Web addresses in a line of chat. Only http and https: what else an address may start is nothing
// that a stranger's line should.

#include <cstddef>
#include <string_view>
#include <vector>

namespace brindle {

// Bytes [begin, end) of a line.
struct LinkRange {
  size_t begin = 0;
  size_t end = 0;
  friend bool operator==(const LinkRange&, const LinkRange&) = default;
};

// The addresses in `line`, in order: from the scheme to the next blank, quote or angle bracket,
// without the punctuation that ends the sentence around them.
std::vector<LinkRange> FindLinks(std::string_view line);

}  // namespace brindle
