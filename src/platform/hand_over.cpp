#include "platform/hand_over.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QThread>

#include "platform/native.h"

namespace brindle {
namespace {

constexpr int kPatienceMilliseconds = 5000;  // a busy program answers late
constexpr int kLookMilliseconds = 10;
constexpr qint64 kLongestText = 8192;  // bytes; more than any path or address

// One file for each process that hands something over.
QString NameFor(const QString& process) { return "brindle-" + process + ".start"; }

// What is older was left behind by a process that was killed, and nobody waits for it.
bool IsAwaited(const QFileInfo& file) {
  return file.lastModified().msecsTo(QDateTime::currentDateTime()) <= kPatienceMilliseconds;
}

}  // namespace

HandOver::HandOver(const std::string& folder, Taken taken)
    : folder_(QString::fromStdString(folder)), taken_(std::move(taken)) {
  QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &watcher_,
                   [this] { TakeAll(); });
  watcher_.addPath(folder_);
  TakeAll();
}

void HandOver::TakeAll() {
  for (const QFileInfo& file : QDir(folder_).entryInfoList({NameFor("*")}, QDir::Files)) {
    const bool isGood = IsAwaited(file) && file.size() <= kLongestText;
    const auto text = NativeFiles().Read(file.filePath().toStdString());
    // Whoever can remove it has it: this program, or the other one that waits no longer.
    if (QFile::remove(file.filePath()) && isGood && text) taken_(*text);
  }
}

bool HandOver::Give(const std::string& folder, const std::string& text) {
  const QString name = NameFor(QString::number(QCoreApplication::applicationPid()));
  const QString path = QDir(QString::fromStdString(folder)).filePath(name);
  if (!NativeFiles().Replace(path.toStdString(), text)) return false;
  const QDeadlineTimer patience(kPatienceMilliseconds);
  while (QFile::exists(path) && !patience.hasExpired()) QThread::msleep(kLookMilliseconds);
  return !QFile::remove(path);
}

}  // namespace brindle
