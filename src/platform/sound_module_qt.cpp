#include <QAudioDevice>
#include <QFileInfo>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QUrl>
#include <map>

#include "platform/sound_module.h"

namespace brindle {
namespace {

// Seven sounds exist; more files than this are the user trying things out.
constexpr size_t kMostKept = 16;
constexpr qint64 kHeaderBytes = 44;  // of a wave file

class QtSoundPlayer : public SoundPlayer {
 public:
  void Play(const std::string& path) override {
    const QFileInfo file(QString::fromStdString(path));
    // The toolkit would wait for the rest of the header for ever.
    if (file.isFile() && file.size() < kHeaderBytes) return Trouble(path);
    if (QMediaDevices::defaultAudioOutput().isNull()) return;
    if (effects_.size() >= kMostKept && effects_.count(path) == 0) effects_.clear();
    std::unique_ptr<QSoundEffect>& effect = effects_[path];
    // A file that could not be read may have been mended since.
    if (effect == nullptr || effect->status() == QSoundEffect::Error) {
      effect = std::make_unique<QSoundEffect>();
      QObject::connect(effect.get(), &QSoundEffect::statusChanged, effect.get(),
                       [this, path, effect = effect.get()] {
                         const QString name = QString::fromStdString(path);
                         if (effect->status() == QSoundEffect::Error && QFileInfo::exists(name)) {
                           Trouble(path);
                         }
                       });
      effect->setSource(QUrl::fromLocalFile(QString::fromStdString(path)));
    }
    effect->play();
  }

 private:
  std::map<std::string, std::unique_ptr<QSoundEffect>> effects_;
};

}  // namespace

}  // namespace brindle

brindle::SoundPlayer* BrindleSoundPlayer() { return new brindle::QtSoundPlayer; }
