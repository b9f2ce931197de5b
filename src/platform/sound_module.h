#pragma once
// What the sound module gives to the program.

#include "base/sound_player.h"

// A new player, which the caller owns.
extern "C" __attribute__((visibility("default"))) brindle::SoundPlayer* BrindleSoundPlayer();
