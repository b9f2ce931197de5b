#include <filesystem>

#include "platform/modules.h"
#include "platform/native.h"
#include "platform/sound_module.h"

namespace brindle {
namespace {

// Loads the sound module for the first sound.
class ModuleSoundPlayer : public SoundPlayer {
 public:
  void Play(const std::string& path) override {
    if (!asked_) Load();
    std::error_code ignored;  // what cannot be looked at is as good as missing
    if (player_ != nullptr) {
      player_->Play(path);
    } else if (std::filesystem::is_regular_file(path, ignored)) {
      Trouble(path);
    }
  }

 private:
  void Load() {
    asked_ = true;
    const auto make =
        FromModule<decltype(BrindleSoundPlayer)>("brindle_sound", "BrindleSoundPlayer");
    if (make == nullptr) return;
    player_.reset(make());
    player_->OnTrouble([this](const std::string& path) { Trouble(path); });
  }

  bool asked_ = false;
  std::unique_ptr<SoundPlayer> player_;
};

}  // namespace

std::unique_ptr<SoundPlayer> NativeSoundPlayer() { return std::make_unique<ModuleSoundPlayer>(); }

}  // namespace brindle
