#pragma once
// What a second start of the program hands to the one that runs already, with the same data folder:
// one text, the list or the address that it was started with. It lies in the folder as a file until
// it is taken.

#include <QFileSystemWatcher>
#include <functional>
#include <string>

namespace brindle {

class HandOver {
 public:
  using Taken = std::function<void(const std::string& text)>;

  // Takes what others hand over from now on. REQUIRES: this program owns the folder.
  HandOver(const std::string& folder, Taken taken);

  // Hands a text to the program that owns the folder: false when it does not take it in time.
  static bool Give(const std::string& folder, const std::string& text);

 private:
  void TakeAll();

  const QString folder_;
  QFileSystemWatcher watcher_;
  Taken taken_;
};

}  // namespace brindle
