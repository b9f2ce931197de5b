#pragma once
// The few loops that look at every byte of a list: each in a portable form and, on x86-64, in forms
// that handle 16 or 32 bytes at a time. The best form that this machine can run is chosen once.
//
// Masks stand for stretches of 64 bytes: bit i of mask b is byte 64 * b + i.

#include <cstddef>
#include <cstdint>

namespace brindle {

inline constexpr size_t kMaskBytes = 64;

struct ByteKernels {
  const char* name;

  // Copies `size` bytes with A to Z made lower case. True when all of them are ASCII; if not, what
  // was written is of no use. `to` may be `from`.
  bool (*lowerAscii)(const char* from, char* to, size_t size);

  // True when no byte has its top bit set.
  bool (*isAscii)(const char* text, size_t size);

  // Marks every LF and every CR. Reads `masks` * kMaskBytes bytes.
  void (*lineEnds)(const char* text, std::uint64_t* mask, size_t masks);

  // Marks every i with a[i] == wantedA and b[i] == wantedB; false when there is none. Reads
  // `masks` * kMaskBytes bytes of both.
  bool (*pairs)(const char* a, char wantedA, const char* b, char wantedB, std::uint64_t* mask,
                size_t masks);
};

// The kernels to use.
const ByteKernels& Kernels();

// Each form that this machine can run, the portable one first; null ends them.
const ByteKernels* const* AllKernels();

// Makes Kernels() answer `kernels` from now on, or the best ones again for null. For tests.
void UseKernels(const ByteKernels* kernels);

// The forms by themselves; null where the program was built for another kind of machine or where
// this machine lacks the instructions.
const ByteKernels* PortableKernels();
const ByteKernels* Sse2Kernels();
const ByteKernels* Avx2Kernels();

}  // namespace brindle
