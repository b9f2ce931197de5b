#include <dlfcn.h>

#include <filesystem>

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
    // Found where the program's own search path says. It stays for good, as the toolkit's parts in
    // it expect.
    void* module = dlopen(SOUND_MODULE, RTLD_NOW | RTLD_NODELETE);
    if (module == nullptr) return;
    using Maker = decltype(&BrindleSoundPlayer);
    const auto make = reinterpret_cast<Maker>(dlsym(module, "BrindleSoundPlayer"));
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
