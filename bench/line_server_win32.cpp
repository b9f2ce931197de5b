#include <cstdlib>

#include "line_server.h"

namespace brindle {

LineServer::LineServer(size_t) {
  const char* port = std::getenv("BRINDLE_LINE_SERVER");
  if (port != nullptr) port_ = std::atoi(port);
}

LineServer::~LineServer() = default;

}  // namespace brindle
