#include "support/data_folder.h"

#include <QDir>
#include <QFile>

namespace brindle::test {

DataFolder::DataFolder(const StartState& start) {
  Write("brindle.ini", "[nicks]\r\npreferred=" + start.nick +
                           "\r\n[server]\r\nlast used=" + (start.server.empty() ? "-1" : "0") +
                           "\r\n[screen name]\r\nlast used=" + start.screenName +
                           "\r\n[misc options]\r\nRequest accesscode if found=" +
                           (start.requestAccessCode ? "1" : "0") + "\r\n");
  Write("irc_servers.txt", start.server + "\r\n");
  std::string channels;
  for (const std::string& channel : start.channels) channels += channel + "\r\n";
  Write("channels.txt", channels);
}

std::string DataFolder::Content(const char* name) const {
  QFile file(File(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "";
}

void DataFolder::Write(const char* name, const std::string& content) const {
  QFile file(File(name));
  if (!file.open(QIODevice::WriteOnly)) qFatal("cannot write %s", name);
  file.write(content.data(), static_cast<qint64>(content.size()));
}

void DataFolder::Remove(const char* name) const {
  if (!QFile::remove(File(name))) qFatal("cannot remove %s", name);
}

std::map<std::string, std::string> DataFolder::All() const {
  std::map<std::string, std::string> all;
  for (const QString& name : QDir(Path()).entryList(QDir::Files | QDir::Hidden)) {
    all[name.toStdString()] = Content(qPrintable(name));
  }
  return all;
}

}  // namespace brindle::test
