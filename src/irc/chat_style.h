#pragma once
// How chat lines begin.

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "settings/options.h"

namespace brindle {

// What decides it: the options, and the time that a line may carry.
struct ChatStyle {
  const Options& options;
  const Clock& clock;
};

// CR LF, and "[3:07pm] " in colours when chat lines carry the time, which is now unless the line
// was `saidAt` another; with room for `more` bytes.
std::string ChatLineStart(const ChatStyle& style, size_t more = 0,
                          const std::optional<std::tm>& saidAt = std::nullopt);

// The length of the time that begins a shown line ("[3:07pm] "), 0 where none does.
size_t TimeLength(std::string_view line);

}  // namespace brindle
