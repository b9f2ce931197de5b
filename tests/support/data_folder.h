#pragma once
// A throw-away data folder, filled as a user would have left it.

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
  explicit DataFolder(const StartState& start = {});

  QString Path() const { return folder_.path(); }
  QString File(const char* name) const { return folder_.filePath(name); }
  // The whole file; empty when there is none.
  std::string Content(const char* name) const;
  void Write(const char* name, const std::string& content) const;
  void Remove(const char* name) const;
  // Every file by its name.
  std::map<std::string, std::string> All() const;

 private:
  QTemporaryDir folder_;
};

}  // namespace brindle::test
