#pragma once
// Plays wave files on this machine; where there is no sound, silently nothing.

#include <memory>

#include "irc/line_pump.h"

namespace brindle {

std::unique_ptr<SoundPlayer> NativeSoundPlayer();

}  // namespace brindle
