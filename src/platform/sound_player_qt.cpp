#include <QAudioDevice>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QUrl>
#include <map>

#include "platform/native.h"

namespace brindle {
namespace {

// Seven sounds exist; more files than this are the user trying things out.
constexpr size_t kMostKept = 16;

class QtSoundPlayer : public SoundPlayer {
 public:
  void Play(const std::string& path) override {
    if (QMediaDevices::defaultAudioOutput().isNull()) return;
    if (effects_.size() >= kMostKept && effects_.count(path) == 0) effects_.clear();
    std::unique_ptr<QSoundEffect>& effect = effects_[path];
    // A file that could not be read may have been mended since.
    if (effect == nullptr || effect->status() == QSoundEffect::Error) {
      effect = std::make_unique<QSoundEffect>();
      effect->setSource(QUrl::fromLocalFile(QString::fromStdString(path)));
    }
    effect->play();
  }

 private:
  std::map<std::string, std::unique_ptr<QSoundEffect>> effects_;
};

}  // namespace

std::unique_ptr<SoundPlayer> NativeSoundPlayer() { return std::make_unique<QtSoundPlayer>(); }

}  // namespace brindle
