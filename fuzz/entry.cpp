// Where libFuzzer calls in.

#include "fuzz/input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  brindle::fuzz::Try({data, size});
  return 0;
}
