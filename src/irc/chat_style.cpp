#include "irc/chat_style.h"

#include "base/text.h"
#include "base/time_text.h"

namespace brindle {

std::string ChatLineStart(const ChatStyle& style, size_t more) {
  constexpr size_t kLongestStart = 32;
  std::string start;
  start.reserve(kLongestStart + more);
  start = kCrLf;
  if (style.options.timestampChatLines) {
    start +=
        "\00315["
        "\00311" +
        ClockText(style.clock.LocalTime()) + "\00315] ";
  }
  return start;
}

}  // namespace brindle
