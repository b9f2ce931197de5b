#pragma once
// Sounds, as the program's logic asks for them.

#include <string>

namespace brindle {

class SoundPlayer {
 public:
  virtual ~SoundPlayer() = default;
  // Starts the wave file at `path` and returns at once; a file that is missing, or a machine
  // without sound, is silence.
  virtual void Play(const std::string& path) = 0;
};

}  // namespace brindle
