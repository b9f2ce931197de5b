#pragma once
// One running program for each data folder.

#include <QLockFile>
#include <string>

namespace brindle {

class SingleInstance {
 public:
  // `folder` is the data folder; its lock is held for as long as this lives.
  explicit SingleInstance(const std::string& folder);

  // True when another running program holds the lock. A folder in which no lock can be made cannot
  // tell, and counts as free.
  bool IsAnotherRunning() const { return another_; }

 private:
  QLockFile lock_;
  bool another_ = false;
};

}  // namespace brindle
