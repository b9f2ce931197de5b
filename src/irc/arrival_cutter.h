#pragma once
// What one arrival is: cuts the byte stream of the socket into whole lines. Networks cut lines at
// every packet, so an incomplete line waits for its rest, however long that takes; one that grows
// beyond all bounds is dropped up to its end.

#include <functional>
#include <string>
#include <string_view>

namespace brindle {

class ArrivalCutter {
 public:
  static constexpr size_t kLongestTail = size_t{16} * 1024;

  // Takes one arrival. It may call Reset, which ends the delivery.
  using Deliver = std::function<void(std::string_view)>;

  // Adds received bytes and delivers each line that is now whole, CR LF included, one at a time.
  void Receive(std::string_view bytes, const Deliver& deliver);

  // Forgets everything received: a new connection begins.
  void Reset();

 private:
  std::string tail_;
  bool dropping_ = false;      // up to the next line end
  bool dropEndsInCr_ = false;  // what was dropped last ended in CR
  unsigned connection_ = 0;    // counts Reset, which a delivery may call
};

}  // namespace brindle
