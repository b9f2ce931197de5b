#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/single_instance.h"

namespace brindle {
namespace {

constexpr mode_t kOwnerOnly = 0600;

// Each further one means that a program ended just now.
constexpr int kTries = 10;

bool IsStillAt(int file, const std::string& path) {
  struct stat held {};
  struct stat named {};
  return ::fstat(file, &held) == 0 && ::lstat(path.c_str(), &named) == 0 &&
         held.st_ino == named.st_ino && held.st_dev == named.st_dev;
}

// For people who wonder: nobody reads it back, so whether it could be written does not matter.
void NoteOwner(int file) {
  if (::ftruncate(file, 0) == 0) ::dprintf(file, "%ld\n", static_cast<long>(::getpid()));
}

}  // namespace

SingleInstance::SingleInstance(const std::string& folder) : path_(folder + "/brindle.lock") {
  for (int i = 0; i < kTries; ++i) {
    const int file =
        ::open(path_.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, kOwnerOnly);
    if (file < 0) return;
    const bool locked = ::flock(file, LOCK_EX | LOCK_NB) == 0;
    another_ = !locked && errno == EWOULDBLOCK;
    // A lock on a file that its owner has removed meanwhile keeps nobody out.
    if (locked && IsStillAt(file, path_)) {
      NoteOwner(file);
      file_ = file;
      return;
    }
    ::close(file);
    if (!locked) return;
  }
}

SingleInstance::~SingleInstance() {
  if (file_ == kNoFile) return;
  const int file = static_cast<int>(file_);
  // Removed while it is locked: whoever opens it now finds, once it has the lock, that it is gone.
  if (IsStillAt(file, path_)) ::unlink(path_.c_str());
  ::close(file);
}

}  // namespace brindle
