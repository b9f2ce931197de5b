#define NOMINMAX
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
    const std::filesystem::path file(name);
    std::error_code ignored;  // what cannot be looked at is as good as missing
    const bool plays = sndPlaySoundW(file.c_str(), SND_ASYNC | SND_NODEFAULT) != FALSE;
    if (!plays && std::filesystem::is_regular_file(file, ignored)) Trouble(path);
  }
};

}  // namespace

std::unique_ptr<SoundPlayer> NativeSoundPlayer() { return std::make_unique<Win32SoundPlayer>(); }

}  // namespace brindle
