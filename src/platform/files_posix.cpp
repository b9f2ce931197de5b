#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "platform/native.h"

namespace brindle {
namespace {

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;
constexpr size_t kBlock = 64 * 1024;

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  bool IsOpen() const { return number_ >= 0; }
  int Number() const { return number_; }

 private:
  int number_;
};

bool WriteAll(int file, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(file, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    content.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

bool Flush(int file) {
  int result = 0;
  do {
    result = ::fsync(file);
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

// The file behind a link, so that a linked settings file stays a link.
std::string BehindLinks(const std::string& path) {
  char* resolved = ::realpath(path.c_str(), nullptr);
  if (resolved == nullptr) return path;
  std::string real(resolved);
  std::free(resolved);
  return real;
}

// Makes the new name survive a loss of power. Not every file system can do this; the rename has
// happened all the same, so failure is ignored on purpose.
void FlushFolderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened.IsOpen()) Flush(opened.Number());
}

bool IsStillAt(int file, const std::string& path) {
  struct stat held {};
  struct stat named {};
  return ::fstat(file, &held) == 0 && ::lstat(path.c_str(), &named) == 0 &&
         held.st_ino == named.st_ino && held.st_dev == named.st_dev;
}

}  // namespace

std::optional<std::string> NativeFiles::Read(const std::string& path) const {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  std::string content;
  for (;;) {
    const size_t size = content.size();
    content.resize(size + kBlock);
    const ssize_t got = ::read(file.Number(), content.data() + size, kBlock);
    content.resize(size + (got > 0 ? static_cast<size_t>(got) : 0));
    if (got == 0) return content;
    if (got < 0 && errno != EINTR) return std::nullopt;
  }
}

bool NativeFiles::Replace(const std::string& path, std::string_view content) {
  const std::string target = BehindLinks(path);
  const std::string beside = target + ".new";
  // A file that a killed program left beside is taken over; one that another program is writing at
  // this moment is locked.
  const Descriptor file(
      ::open(beside.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, kOwnerOnly));
  if (!file.IsOpen() || ::flock(file.Number(), LOCK_EX | LOCK_NB) != 0 ||
      !IsStillAt(file.Number(), beside)) {
    return false;
  }
  if (::fchmod(file.Number(), kOwnerOnly) == 0 && ::ftruncate(file.Number(), 0) == 0 &&
      WriteAll(file.Number(), content) && Flush(file.Number()) &&
      std::rename(beside.c_str(), target.c_str()) == 0) {
    FlushFolderOf(target);
    return true;
  }
  ::unlink(beside.c_str());
  return false;
}

bool NativeFiles::Remove(const std::string& path) {
  return ::unlink(path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR;
}

bool NativeFiles::FileExists(const std::string& path) const {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool IsWritableFolder(const std::string& folder) {
  struct stat status {};
  return ::stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         ::access(folder.c_str(), W_OK | X_OK) == 0;
}

}  // namespace brindle
