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

// One file for each process that hands something over.
QString NameFor(const QString& process) { return "brindle-" + process + ".start"; }

QFileInfoList Given(const QString& folder) {
  return QDir(folder).entryInfoList({NameFor("*")}, QDir::Files);
}

}  // namespace

HandOver::HandOver(const std::string& folder, Taken taken)
    : folder_(QString::fromStdString(folder)), taken_(std::move(taken)) {
  QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &watcher_,
                   [this] { TakeAll(); });
  watcher_.addPath(folder_);
  // What is old was left behind by a process that was killed, and nobody waits for it.
  const QDateTime old = QDateTime::currentDateTime().addMSecs(-kPatienceMilliseconds);
  for (const QFileInfo& file : Given(folder_)) {
    if (file.lastModified() < old) QFile::remove(file.filePath());
  }
  TakeAll();
}

void HandOver::TakeAll() {
  for (const QFileInfo& file : Given(folder_)) {
    const auto text = NativeFiles().Read(file.filePath().toStdString());
    // Whoever can remove it has it: this program, or the other one that waits no longer.
    if (text && QFile::remove(file.filePath())) taken_(*text);
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
