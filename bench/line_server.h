#pragma once
// An IRC server in a process of its own that does one thing: it welcomes a client on loopback, puts
// it into a room and says any number of lines there, as fast as the client takes them; then the
// next. A program for Windows finds one of Linux by the variable BRINDLE_LINE_SERVER, a port.

#include <sys/types.h>

#include <cstddef>

namespace brindle {

class LineServer {
 public:
  // Begins to listen and starts the process. Port() is 0 when that failed.
  explicit LineServer(size_t lines);
  // Ends the process.
  ~LineServer();
  LineServer(const LineServer&) = delete;
  LineServer& operator=(const LineServer&) = delete;

  int Port() const { return port_; }

 private:
  int port_ = 0;
  pid_t process_ = -1;
};

}  // namespace brindle
