#pragma once
// Memory for the few very large arrays of the program. Where the system allows it, large amounts
// lie in large pages (a fresh small page costs more than filling it) and move without being copied.

#include <cstddef>

namespace brindle {

// A place of `size` bytes that begins with the first `used` bytes of `old`, a place of `oldSize`
// bytes or null; `old` is gone then. Throws std::bad_alloc, and `old` is as it was.
void* ResizeMemory(void* old, size_t oldSize, size_t used, size_t size);

// `memory` is a place of `size` bytes or null.
void FreeMemory(void* memory, size_t size);

}  // namespace brindle
