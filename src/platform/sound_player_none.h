#pragma once

#include "irc/line_pump.h"

namespace brindle {

// A machine without sound.
class NoSoundPlayer : public SoundPlayer {
 public:
  void Play(const std::string&) override {}
};

}  // namespace brindle
