#pragma once
// A throw-away data folder, filled as a user would have left it.

#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <map>
#include <string>
#include <vector>

namespace brindle::test {

// What the program finds stored when it opens.
struct StartState {
  std::string nick;
  std::string server;  // "host:port"; selected when given
  std::vector<std::string> channels;
  std::string screenName;
  bool requestAccessCode = false;
};

class DataFolder {
 public:
  explicit DataFolder(const StartState& start = {}) {
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

  QString Path() const { return folder_.path(); }
  QString File(const char* name) const { return folder_.filePath(name); }

  // The whole file; empty when there is none.
  std::string Content(const char* name) const {
    QFile file(File(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "";
  }
  void Write(const char* name, const std::string& content) const {
    QFile file(File(name));
    if (!file.open(QIODevice::WriteOnly)) qFatal("cannot write %s", name);
    file.write(content.data(), static_cast<qint64>(content.size()));
  }
  void Remove(const char* name) const {
    if (!QFile::remove(File(name))) qFatal("cannot remove %s", name);
  }
  // Every file by its name.
  std::map<std::string, std::string> All() const {
    std::map<std::string, std::string> all;
    for (const QString& name : QDir(Path()).entryList(QDir::Files | QDir::Hidden)) {
      all[name.toStdString()] = Content(qPrintable(name));
    }
    return all;
  }

 private:
  QTemporaryDir folder_;
};

}  // namespace brindle::test
