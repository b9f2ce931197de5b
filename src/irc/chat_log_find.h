#pragma once
// Looks for a text in a chat log, whatever the case of either.

#include <optional>
#include <string_view>

#include "irc/chat_log.h"

namespace brindle {

enum class FindDirection { kForward, kBackward };

// Forward: the first hit that begins at `from` or later, else the first of the log. Backward: the
// last hit that begins before `from`, else the last of the log. Nothing when the log does not hold
// the text, or when the text is empty. A hit never spans lines.
std::optional<LogRange> FindInLog(const ChatLog& log, std::string_view text, LogPosition from,
                                  FindDirection direction);

}  // namespace brindle
