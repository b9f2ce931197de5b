// Feeds any bytes to the list reader and compares it with a slow reading of the same bytes.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "list_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::string wrong = brindle::WrongWithReading(bytes);
  if (!wrong.empty()) {
    std::fprintf(stderr, "%s\n", wrong.c_str());
    std::abort();
  }
  return 0;
}
