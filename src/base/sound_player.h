#pragma once
// Sounds, as the program's logic asks for them.

#include <functional>
#include <set>
#include <string>

namespace brindle {

class SoundPlayer {
 public:
  virtual ~SoundPlayer() = default;
  // Starts the wave file at `path` and returns at once; a file that is missing, or a machine
  // without sound, is silence.
  virtual void Play(const std::string& path) = 0;

  // Called for a file that is there and cannot be played, once for each.
  void OnTrouble(std::function<void(const std::string& path)> tell) { tell_ = std::move(tell); }

 protected:
  void Trouble(const std::string& path) {
    if (tell_ && told_.insert(path).second) tell_(path);
  }

 private:
  std::function<void(const std::string& path)> tell_;
  std::set<std::string> told_;
};

}  // namespace brindle
