#pragma once
// Plays wave files on this machine; where there is no sound, silently nothing.

#include <memory>

#include "base/sound_player.h"

namespace brindle {

std::unique_ptr<SoundPlayer> NativeSoundPlayer();

}  // namespace brindle
