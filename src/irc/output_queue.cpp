#include "irc/output_queue.h"

#include <algorithm>
#include <cstring>

#include "irc/chat_colours.h"

namespace brindle {
namespace {

constexpr size_t kBlockSize = size_t{64} * 1024;
using Length = std::uint32_t;
constexpr size_t kHeaderSize = 2 + sizeof(Length);  // kind, origin, then the length of the text

}  // namespace

void OutputQueue::QueueLine(std::string_view text, Kind kind, Origin origin) {
  std::string changed;
  text = ShowableText(text, changed);
  const size_t need = kHeaderSize + text.size();
  if (blocks_.empty() || blocks_.back().bytes.size() + need > kBlockSize) {
    blocks_.emplace_back();
    // A small backlog should stay small: only a second block in a row is made full size at once.
    blocks_.back().bytes.reserve(blocks_.size() > 1 ? std::max(kBlockSize, need) : need);
  }
  std::string& bytes = blocks_.back().bytes;
  const auto length = static_cast<Length>(text.size());
  char header[kHeaderSize];
  header[0] = static_cast<char>(kind);
  header[1] = static_cast<char>(origin);
  std::memcpy(header + 2, &length, sizeof length);
  bytes.append(header, kHeaderSize);
  bytes.append(text);
  ++pending_;
  if (wake_) wake_();
}

OutputQueue::Line OutputQueue::Take() {
  Block& block = blocks_.front();
  const char* record = block.bytes.data() + block.taken;
  Length length = 0;
  std::memcpy(&length, record + 2, sizeof length);
  Line line{std::string(record + kHeaderSize, length), static_cast<Kind>(record[0]),
            static_cast<Origin>(record[1])};
  block.taken += kHeaderSize + length;
  if (block.taken == block.bytes.size()) blocks_.pop_front();
  --pending_;
  return line;
}

}  // namespace brindle
