#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

#include "platform/native.h"

namespace brindle {
namespace {

constexpr QFile::Permissions kOwnerOnly = QFile::ReadOwner | QFile::WriteOwner;

// Asked of the file's own mark: who may write anyway, as an administrator, is no less asked not to.
bool IsMarkedReadOnly(const QFileInfo& file) {
  return file.exists() && !file.permission(QFile::WriteOwner);
}

bool ReplaceFile(const QString& name, std::string_view content) {
  if (IsMarkedReadOnly(QFileInfo(name))) return false;
  QSaveFile file(name);
  // The commit does not see that the last bytes found no room: flush() does.
  return file.open(QIODevice::WriteOnly) && file.setPermissions(kOwnerOnly) &&
         file.write(content.data(), static_cast<qint64>(content.size())) ==
             static_cast<qint64>(content.size()) &&
         file.flush() && file.commit();
}

}  // namespace

std::optional<std::string> NativeFiles::Read(const std::string& path) const {
  QFile file(QString::fromStdString(path));
  // What is no file, a pipe for instance, might keep the program waiting.
  if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray content = file.readAll();
  if (file.error() != QFile::NoError) return std::nullopt;
  return content.toStdString();
}

bool NativeFiles::Replace(const std::string& path, std::string_view content) {
  // Most of what is saved at the end has not changed.
  const bool replaced = Read(path) == content || ReplaceFile(QString::fromStdString(path), content);
  if (!replaced && trouble_) trouble_(path);
  return replaced;
}

bool NativeFiles::Remove(const std::string& path) {
  const QString name = QString::fromStdString(path);
  return QFile::remove(name) || !QFileInfo(name).exists();
}

bool NativeFiles::FileExists(const std::string& path) const {
  const QFileInfo file(QString::fromStdString(path));
  return file.exists() && !file.isDir();
}

bool IsWritableFolder(const std::string& folder) {
  return QTemporaryFile(QString::fromStdString(folder) + "/brindle.XXXXXX").open();
}

}  // namespace brindle
