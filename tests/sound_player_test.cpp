// The player of sounds on this machine, with or without a device.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include "platform/native.h"
#include "support/wait.h"

namespace brindle::test {
namespace {

// A tenth of a second of silence: one channel, 16 bits.
QByteArray Wave() {
  constexpr quint32 kRate = 8000;
  constexpr quint32 kBytes = kRate / 10 * 2;
  QByteArray wave;
  const auto number = [&wave](auto value) {
    const auto little = qToLittleEndian(value);
    wave.append(reinterpret_cast<const char*>(&little), sizeof little);
  };
  wave += "RIFF";
  number(quint32{36 + kBytes});
  wave += "WAVEfmt ";
  number(quint32{16});
  for (const int value : {1, 1}) number(static_cast<quint16>(value));
  number(kRate);
  number(quint32{kRate * 2});
  for (const int value : {2, 16}) number(static_cast<quint16>(value));
  wave += "data";
  number(kBytes);
  return wave + QByteArray(kBytes, '\0');
}

TEST(SoundPlayer, ReturnsAtOnceWhateverItIsGiven) {
  constexpr int kRounds = 50;
  constexpr int kLongestMs = 5000;
  const QTemporaryDir folder;
  const auto write = [&folder](const QString& name, const QByteArray& content) {
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(content), content.size());
    return file.fileName().toStdString();
  };
  std::vector<std::string> paths;
  for (int i = 0; i < 7; ++i) paths.push_back(write(QString("sound%1.wav").arg(i), Wave()));
  paths.push_back(write("text.wav", "no wave at all"));
  paths.push_back(write("cut.wav", Wave().left(30)));
  paths.push_back(write("empty.wav", ""));
  paths.push_back(folder.filePath("missing.wav").toStdString());
  paths.push_back(folder.path().toStdString());
  paths.push_back("");
  // More files than are kept at a time.
  for (int i = 0; i < 7; ++i) paths.push_back(write(QString("more%1.wav").arg(i), Wave()));

  const std::unique_ptr<SoundPlayer> player = NativeSoundPlayer();
  player->Play(paths.front());  // the first sound may look for the devices
  QElapsedTimer taken;
  taken.start();
  for (int round = 0; round < kRounds; ++round) {
    for (const std::string& path : paths) player->Play(path);
    QCoreApplication::processEvents();
  }
  EXPECT_LT(taken.elapsed(), kLongestMs);
}

}  // namespace
}  // namespace brindle::test
