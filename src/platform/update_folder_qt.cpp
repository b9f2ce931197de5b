#include "platform/update_folder_qt.h"

#include <QFile>
#include <QRegularExpression>

namespace brindle {
namespace {

// What the toolkit names the files that are being written: the name, a dot and six characters.
constexpr char kTemporaryFiles[] = "*.??????";
constexpr char kOurFiles[] = "^(update\\.tmp|brindle\\.exe)\\.\\w{6}$";

}  // namespace

QtUpdateFolder::QtUpdateFolder(const std::string& dataFolder)
    : folder_(QString::fromStdString(dataFolder) + "/update") {}

void QtUpdateFolder::Prepare() {
  folder_.mkpath(".");
  static const QRegularExpression ours(kOurFiles);
  for (const QString& name : folder_.entryList({kTemporaryFiles}, QDir::Files)) {
    if (ours.match(name).hasMatch()) folder_.remove(name);
  }
}

void QtUpdateFolder::Remove(const std::string& name) {
  folder_.remove(QString::fromStdString(name));
}

bool QtUpdateFolder::Open(const std::string& name) {
  hash_.reset();
  file_ = std::make_unique<QSaveFile>(folder_.filePath(QString::fromStdString(name)));
  return file_->open(QIODevice::WriteOnly);
}

bool QtUpdateFolder::Write(std::string_view bytes) {
  const auto size = static_cast<qint64>(bytes.size());
  hash_.addData(QByteArrayView(bytes.data(), size));
  return file_ != nullptr && file_->write(bytes.data(), size) == size;
}

bool QtUpdateFolder::Commit() {
  // The commit does not see that the last bytes found no room: flush() does.
  const bool done = file_ != nullptr && file_->flush() && file_->commit();
  file_.reset();
  return done;
}

std::string QtUpdateFolder::PathOf(const std::string& name) const {
  const QString path = folder_.absoluteFilePath(QString::fromStdString(name));
  return QDir::toNativeSeparators(path).toStdString();
}

std::optional<std::string> QtUpdateFolder::Read(const std::string& name, size_t longest) {
  QFile file(folder_.filePath(QString::fromStdString(name)));
  if (!file.open(QIODevice::ReadOnly) || file.size() > static_cast<qint64>(longest)) {
    return std::nullopt;
  }
  return file.readAll().toStdString();
}

}  // namespace brindle
