#pragma once
// What the program learns from the AOL client on the same machine.

#include <string>

namespace brindle {

class AolLink {
 public:
  virtual ~AolLink() = default;
  // The screen name of the signed-on user as the client shows it; empty when no client runs.
  virtual std::string GetAolScreenName() = 0;
};

}  // namespace brindle
