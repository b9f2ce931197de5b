#pragma once
// What this machine gives: files, sounds, the windows of other programs, the window's own menu.
// Where it has no such thing, nothing happens and nothing is found.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "aol/window_tree.h"
#include "base/files.h"
#include "base/secret_store.h"
#include "base/sound_player.h"

namespace brindle {

// Paths are UTF-8. Replace writes a file of its own beside the old one first, so that two programs
// that replace the same file at the same moment never mix: the last one stands. A link stays a
// link; a file that is marked read-only is not replaced, and one that holds the content already is
// left alone.
class NativeFiles : public Files {
 public:
  std::optional<std::string> Read(const std::string& path) const override;
  bool Replace(const std::string& path, std::string_view content) override;
  bool Remove(const std::string& path) override;
  bool FileExists(const std::string& path) const override;

  // Called with the path of each file that could not be replaced.
  void OnTrouble(std::function<void(const std::string& path)> trouble) {
    trouble_ = std::move(trouble);
  }

 private:
  std::function<void(const std::string& path)> trouble_;
};

// True when files can be created in `folder`: tried out, for marks and rights do not tell.
bool IsWritableFolder(const std::string& folder);

// Plays wave files.
std::unique_ptr<SoundPlayer> NativeSoundPlayer();

std::unique_ptr<WindowTree> NativeWindowTree();

// The keyring of the desktop, or the credentials of Windows.
std::unique_ptr<SecretStore> NativeSecretStore(Secret which);

// Takes the Size command out of a window's system menu. `window` is its native handle.
void RemoveSizeCommand(std::uintptr_t window);

}  // namespace brindle
