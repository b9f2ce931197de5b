#pragma once
// The loops that look at every byte of a list: each in a portable form and, on x86-64, in forms
// that handle 16 or 32 bytes at a time. The best form that this machine can run is chosen once.
//
// Masks stand for stretches of 64 bytes: bit i of mask b is byte 64 * b + i.

#include <cstddef>
#include <cstdint>

namespace brindle {

inline constexpr size_t kMaskBytes = 64;

// A byte of a text whose case does not matter; twice the same where there is no case.
struct EitherByte {
  char lower;
  char upper;
};

struct ByteKernels {
  const char* name;

  // Marks every LF, and every CR that no LF follows. Reads one byte more than it marks.
  void (*lineEnds)(const char* text, std::uint64_t* mask, size_t masks);

  // Marks every i where a[i] is one of wantedA and b[i] one of wantedB; false when there is none.
  // Reads `masks` * kMaskBytes bytes of both.
  bool (*pairs)(const char* a, EitherByte wantedA, const char* b, EitherByte wantedB,
                std::uint64_t* mask, size_t masks);
};

// The kernels to use.
const ByteKernels& Kernels();

// Each form that this machine can run, the portable one first and the best one last; null ends
// them.
const ByteKernels* const* AllKernels();

// Makes Kernels() answer `kernels` from now on, or the best ones again for null. For tests.
void UseKernels(const ByteKernels* kernels);

}  // namespace brindle
