#pragma once
// A disk without room: as long as one of these lives, no file that this process writes gets longer
// than so many bytes.

#include <sys/resource.h>

#include <csignal>

namespace brindle::test {

class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit few{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &few);
  }
  ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before_); }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit before_{};
};

}  // namespace brindle::test
