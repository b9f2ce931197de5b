// Feeds any bytes to a whole session, as a server would send them.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "session_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::string wrong = brindle::WrongWithReceiving(bytes);
  if (!wrong.empty()) {
    std::fprintf(stderr, "%s\n", wrong.c_str());
    std::abort();
  }
  return 0;
}
