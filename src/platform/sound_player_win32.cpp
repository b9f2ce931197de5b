#include <windows.h>
// After windows.h, which it needs.
#include <mmsystem.h>

#include <filesystem>

#include "platform/native.h"

namespace brindle {
namespace {

class Win32SoundPlayer : public SoundPlayer {
 public:
  void Play(const std::string& path) override {
    const std::u8string name(path.begin(), path.end());
    sndPlaySoundW(std::filesystem::path(name).c_str(), SND_ASYNC | SND_NODEFAULT);
  }
};

}  // namespace

std::unique_ptr<SoundPlayer> NativeSoundPlayer() { return std::make_unique<Win32SoundPlayer>(); }

}  // namespace brindle
