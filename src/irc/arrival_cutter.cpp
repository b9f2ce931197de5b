#include "irc/arrival_cutter.h"

#include <utility>

#include "base/text.h"

namespace brindle {

void ArrivalCutter::Receive(std::string_view bytes, const Deliver& deliver) {
  if (dropping_) {
    const bool splitEnd = dropEndsInCr_ && bytes.starts_with('\n');
    const size_t end = splitEnd ? 0 : bytes.find(kCrLf);
    if (end == std::string_view::npos) {
      if (!bytes.empty()) dropEndsInCr_ = bytes.ends_with('\r');
      return;
    }
    bytes.remove_prefix(splitEnd ? 1 : end + kCrLf.size());
    dropping_ = false;
  }
  if (bytes.empty()) return;
  // The search for a line end need not look again at what was searched before, but for a last CR.
  const size_t searchFrom = tail_.empty() ? 0 : tail_.size() - 1;

  // Whole lines that arrive behind no tail are handed on from where they are.
  std::string joined;
  if (!tail_.empty()) {
    joined = std::exchange(tail_, {});
    joined.append(bytes);
  }
  const std::string_view received = joined.empty() ? bytes : joined;
  const unsigned connection = connection_;
  size_t begin = 0;
  for (size_t end = received.find(kCrLf, searchFrom); end != std::string_view::npos;
       end = received.find(kCrLf, begin)) {
    const std::string_view line = received.substr(begin, end + 2 - begin);
    begin = end + kCrLf.size();
    deliver(line);
    if (connection != connection_) return;
  }
  tail_ = received.substr(begin);
  if (tail_.size() <= kLongestTail) return;
  dropping_ = true;
  dropEndsInCr_ = tail_.ends_with('\r');
  tail_.clear();
}

void ArrivalCutter::Reset() {
  tail_.clear();
  dropping_ = false;
  dropEndsInCr_ = false;
  ++connection_;
}

}  // namespace brindle
