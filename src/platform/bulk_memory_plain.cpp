#include <cstdlib>
#include <new>

#include "base/bulk_memory.h"

namespace brindle {

void* ResizeMemory(void* old, size_t, size_t, size_t size) {
  void* memory = std::realloc(old, size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void FreeMemory(void* memory, size_t) { std::free(memory); }

}  // namespace brindle
