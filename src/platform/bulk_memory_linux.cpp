#include <sys/mman.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "base/bulk_memory.h"

namespace brindle {
namespace {

constexpr size_t kLargePage = size_t{2} << 20U;
// Below this, half a large page left empty would be too much.
constexpr size_t kLarge = 2 * kLargePage;

// A multiple of every size that small pages have. The last ones of a place are small.
constexpr size_t kStep = size_t{64} << 10U;

size_t Mapped(size_t size) { return (size + kStep - 1) / kStep * kStep; }

// A mapping of `size` bytes, a multiple of kStep, that begins with a large page.
void* Map(size_t size) {
  void* wide =
      mmap(nullptr, size + kLargePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (wide == MAP_FAILED) throw std::bad_alloc();
  char* begin = static_cast<char*>(wide);
  const size_t before =
      (kLargePage - reinterpret_cast<std::uintptr_t>(wide) % kLargePage) % kLargePage;
  if (before > 0) munmap(begin, before);
  munmap(begin + before + size, kLargePage - before);
  // A system without large pages refuses: no harm done.
  madvise(begin + before, size, MADV_HUGEPAGE);
  return begin + before;
}

}  // namespace

void* ResizeMemory(void* old, size_t oldSize, size_t used, size_t size) {
  if (oldSize < kLarge && size < kLarge) {
    void* memory = std::realloc(old, size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
  }
  if (oldSize >= kLarge && Mapped(oldSize) == Mapped(size)) return old;
  void* memory = size >= kLarge ? Map(Mapped(size)) : std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  if (oldSize >= kLarge && size > oldSize) {
    const size_t mapped = Mapped(oldSize);
    if (mremap(old, mapped, mapped, MREMAP_MAYMOVE | MREMAP_FIXED, memory) == memory) return memory;
  }
  if (used > 0) std::memcpy(memory, old, std::min(used, size));
  FreeMemory(old, oldSize);
  return memory;
}

void FreeMemory(void* memory, size_t size) {
  if (size < kLarge) {
    std::free(memory);
  } else {
    munmap(memory, Mapped(size));
  }
}

}  // namespace brindle
