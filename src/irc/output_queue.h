#pragma once
// The display queue: every line that the session wants to show waits here until the pump takes it.
// Lines lie end to end in large blocks, so that a long backlog costs little more than its text, and
// both ends work in constant time.

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "irc/line_kind.h"

namespace brindle {

// Who a line comes from, for those who read along.
enum class Origin : std::uint8_t {
  kNews,  // the server, the program, or somebody outside the current room
  kRoom,  // somebody else in the current room
  kOwn,   // the user
};

class OutputQueue {
 public:
  struct Line {
    std::string text;
    Kind kind;
    Origin origin;
  };

  // Appends a line, made showable. `text` normally begins with CR LF and may carry colour codes.
  void QueueLine(std::string_view text, Kind kind, Origin origin = Origin::kNews);

  size_t Pending() const { return pending_; }

  // Removes and returns the oldest line. REQUIRES: Pending() > 0.
  Line Take();

  // While busy, nothing leaves the queue: the parser is appending.
  void SetBusy(bool busy) { busy_ = busy; }
  bool IsBusy() const { return busy_; }

  // Called after each QueueLine: wakes a pump that rests.
  void OnQueued(std::function<void()> wake) { wake_ = std::move(wake); }

 private:
  struct Block {
    std::string bytes;
    size_t taken = 0;
  };

  std::deque<Block> blocks_;
  size_t pending_ = 0;
  bool busy_ = false;
  std::function<void()> wake_;
};

}  // namespace brindle
