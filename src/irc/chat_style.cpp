#include "irc/chat_style.h"

#include <algorithm>

#include "base/text.h"
#include "base/time_text.h"

namespace brindle {

std::string ChatLineStart(const ChatStyle& style, size_t more,
                          const std::optional<std::tm>& saidAt) {
  constexpr size_t kLongestStart = 32;
  std::string start;
  start.reserve(kLongestStart + more);
  start = kCrLf;
  if (style.options.timestampChatLines) {
    start +=
        "\00315["
        "\00311";
    start += ClockText(saidAt ? *saidAt : style.clock.LocalTime());
    start += "\00315] ";
  }
  return start;
}

size_t TimeLength(std::string_view line) {
  constexpr std::string_view kShape = "[0:00am] ";
  constexpr std::string_view kLongShape = "[00:00am] ";
  for (const std::string_view shape : {kShape, kLongShape}) {
    const bool alike =
        line.size() >= shape.size() &&
        std::equal(shape.begin(), shape.end(), line.begin(), [](char wanted, char found) {
          if (wanted == '0') return found >= '0' && found <= '9';
          return wanted == found || (wanted == 'a' && found == 'p');
        });
    if (alike) return shape.size();
  }
  return 0;
}

}  // namespace brindle
