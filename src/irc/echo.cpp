#include "irc/echo.h"

#include "base/text.h"
#include "base/time_text.h"

namespace brindle {

std::string ChatLineStart(const Options& options, const Clock& clock, size_t more) {
  constexpr size_t kLongestStart = 32;
  std::string start;
  start.reserve(kLongestStart + more);
  start = kCrLf;
  if (options.timestampChatLines) {
    start +=
        "\00315["
        "\00311" +
        ClockText(clock.LocalTime()) + "\00315] ";
  }
  return start;
}

std::string EchoStart(const Session& session, const Options& options, const Clock& clock) {
  return ChatLineStart(options, clock) + "\0031<" + session.currentNick + "> ";
}

}  // namespace brindle
