#pragma once
// The beginnings that display lines share: the line break, the optional time, and the own nick in
// front of a line that the user said in the room.

#include <string>

#include "base/clock.h"
#include "irc/session.h"
#include "settings/options.h"

namespace brindle {

// CR LF, and "[3:07pm] " in colours when chat lines carry the time; with room for `more` bytes.
std::string ChatLineStart(const Options& options, const Clock& clock, size_t more = 0);

// ChatLineStart, then the own nick in angle brackets and a blank.
std::string EchoStart(const Session& session, const Options& options, const Clock& clock);

}  // namespace brindle
