#pragma once
// The fuzzer's bytes, taken piece by piece; and the end of a run that has found something.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text.h"

namespace brindle::fuzz {

class Bytes {
 public:
  Bytes(const std::uint8_t* data, size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

  bool IsEmpty() const { return rest_.empty(); }
  // 0 at the end, as all numbers are.
  unsigned Byte() {
    if (rest_.empty()) return 0;
    const auto byte = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
  }
  // So many bytes as the next one says.
  std::string Text() {
    const size_t size = Byte();
    const std::string_view text = rest_.substr(0, size);
    rest_.remove_prefix(text.size());
    return std::string(text);
  }
  std::string_view Rest() { return std::exchange(rest_, {}); }

 private:
  std::string_view rest_;
};

// One run of the fuzzer, on all of its bytes.
void Try(Bytes input);

// A line ends at CR LF, CR or LF.
inline std::vector<std::string> LinesOf(std::string_view text) {
  std::string ends = JoinFrom(Split(text, "\r\n"), 0, "\n");
  std::replace(ends.begin(), ends.end(), '\r', '\n');
  const auto lines = Split(ends, "\n");
  return {lines.begin(), lines.end()};
}

inline void Require(bool holds, const char* what, std::string_view where = "") {
  if (holds) return;
  std::fprintf(stderr, "%s: %.*s\n", what, static_cast<int>(where.size()), where.data());
  std::abort();
}

}  // namespace brindle::fuzz
