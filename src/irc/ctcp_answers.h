#pragma once
// Answers to what others ask this program in private (CTCP): its version, the time, and a ping. Few
// at a time, so that nobody can make it flood the server.

#include <ctime>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "base/clock.h"

namespace brindle {

class CtcpAnswers {
 public:
  // The text of the NOTICE that answers `request`, at most `most` bytes; nothing for another
  // question or when there were too many.
  std::optional<std::string> AnswerTo(std::string_view request, size_t most, const Clock& clock);

 private:
  bool MayAnswer(TickCount now);

  std::deque<TickCount> answered_;  // the last ones
};

}  // namespace brindle
