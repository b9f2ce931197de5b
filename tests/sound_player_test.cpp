// The player of sounds on this machine, with or without a device.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include "platform/native.h"

namespace brindle {
namespace {

// A player that waited for the end of each sound would take minutes, and a test may not.
TEST(SoundPlayer, ReturnsAtOnceWhateverItIsGiven) {
  // Half a second of silence: 8000 samples a second, one channel, 16 bits.
  const QByteArray wave = QByteArray::fromHex(
                              "52494646641f000057415645666d742010000000"
                              "01000100401f0000803e00000200100064617461401f0000") +
                          QByteArray(8000, '\0');
  const QTemporaryDir folder;
  std::vector<std::string> paths = {"", folder.path().toStdString(), "missing.wav"};
  for (int i = 0; i < 18; ++i) {  // more than are kept at a time; the first two are broken
    QFile file(folder.filePath(QString::number(i) + ".wav"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(i < 2 ? wave.left(30 * i) : wave);
    paths.push_back(file.fileName().toStdString());
  }
  const std::unique_ptr<SoundPlayer> player = NativeSoundPlayer();
  for (int round = 0; round < 50; ++round) {
    for (const std::string& path : paths) player->Play(path);
    QCoreApplication::processEvents();
  }
}

}  // namespace
}  // namespace brindle
