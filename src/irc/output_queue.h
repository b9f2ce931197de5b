#pragma once
// The display queue: every line that the session wants to show waits here until the pump takes it.
// Lines lie end to end in large blocks, so that a long backlog costs little more than its text, and
// both ends work in constant time.

#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "irc/line_kind.h"

namespace brindle {

class OutputQueue {
 public:
  struct Line {
    std::string text;
    Kind kind;
  };

  // Appends a line. `text` normally begins with CR LF and may carry colour codes.
  void QueueLine(std::string_view text, Kind kind);

  size_t Pending() const { return pending_; }

  // Removes and returns the oldest line. REQUIRES: Pending() > 0.
  Line Take();

  // Called after each QueueLine: wakes a pump that rests.
  void OnQueued(std::function<void()> wake) { wake_ = std::move(wake); }

 private:
  struct Block {
    std::string bytes;
    size_t taken = 0;
  };

  std::deque<Block> blocks_;
  size_t pending_ = 0;
  std::function<void()> wake_;
};

}  // namespace brindle
