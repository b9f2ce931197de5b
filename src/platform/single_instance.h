#pragma once
// One running program for each data folder. The lock belongs to the process and goes with it,
// however it ends; what a lock file holds, and who left it behind, never matters.

#include <cstdint>
#include <string>

namespace brindle {

class SingleInstance {
 public:
  // `folder` is the data folder, in UTF-8; its lock is held for as long as this lives.
  explicit SingleInstance(const std::string& folder);
  // Removes the lock file, if the lock was ours.
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // True when another running program holds the lock. A folder in which no lock can be made cannot
  // tell, and counts as free.
  bool IsAnotherRunning() const { return another_; }

 private:
  static constexpr std::intptr_t kNoFile = -1;

  std::string path_;
  std::intptr_t file_ = kNoFile;  // the system's, open for as long as the lock is held
  bool another_ = false;
};

}  // namespace brindle
