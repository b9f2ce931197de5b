#pragma once
// What the sound module gives to the program. The module is a library of its own, because it stands
// on a dozen libraries that nothing else needs, and most sessions begin without a sound.

#include "base/sound_player.h"

// A new player, which the caller owns.
extern "C" __attribute__((visibility("default"))) brindle::SoundPlayer* BrindleSoundPlayer();
