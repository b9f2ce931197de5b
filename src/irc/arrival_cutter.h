#pragma once
// What one arrival is: cuts the byte stream of the socket into the texts that DataArrival hands on.
// Networks cut lines at every packet, so a line is handed on when it is whole. A tail that nothing
// completes for a while, or that grows too long, is handed on by itself, and what comes after it up
// to the next line end is dropped: its beginning is gone, so it must not pass for a line.

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/clock.h"

namespace brindle {

class ArrivalCutter {
 public:
  static constexpr int kTailPatienceMilliseconds = 50;
  static constexpr size_t kLongestTail = size_t{16} * 1024;

  // Takes one arrival. It may call Reset, which ends the delivery.
  using Deliver = std::function<void(std::string_view)>;

  // Adds received bytes and delivers each line that is now whole (CR LF included), one at a time,
  // and a tail longer than kLongestTail. `now` is the moment of receipt.
  void Receive(std::string_view bytes, TickCount now, const Deliver& deliver);

  // Delivers the tail when its patience has run out at `now`.
  void Tick(TickCount now, const Deliver& deliver);

  // The moment from which on Tick delivers the tail; nothing when no tail waits.
  std::optional<TickCount> TailDue() const;

  // Forgets everything received: a new connection begins.
  void Reset();

 private:
  void DeliverTail(const Deliver& deliver);

  std::string tail_;
  TickCount tailSince_ = 0;
  bool dropping_ = false;      // up to the next line end
  bool dropEndsInCr_ = false;  // what was dropped last ended in CR
  unsigned connection_ = 0;    // counts Reset, which a delivery may call
};

}  // namespace brindle
