#include "mail/byte_kernels.h"

#include <bit>
#include <cstring>

#ifdef __x86_64__
#include <immintrin.h>
#endif

namespace brindle {
namespace {

constexpr unsigned char Byte(char c) { return static_cast<unsigned char>(c); }

namespace portable {

#define BRINDLE_TARGET
#ifdef __GNUC__
constexpr size_t kWidth = 8;
using Vector [[gnu::vector_size(kWidth)]] = unsigned char;

// The bytes that are all ones as eight neighbouring bits.
template <typename Comparison>
std::uint64_t Bits(Comparison equal) {
  std::uint64_t word = 0;
  std::memcpy(&word, &equal, sizeof word);
  if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
  return ((word & 0x0101010101010101U) * 0x0102040810204080U) >> 56U;
}
#else
// Other compilers have no vectors of their own.
constexpr size_t kWidth = 1;
using Vector = unsigned char;

std::uint64_t Bits(int equal) { return static_cast<std::uint64_t>(equal); }
#endif

#include "mail/byte_loops.h"
#undef BRINDLE_TARGET
constexpr ByteKernels kKernels = {"portable", LineEnds, Pairs};

}  // namespace portable

#ifdef __x86_64__

// Every x86-64 machine has SSE2.
namespace sse2 {

#define BRINDLE_TARGET
constexpr size_t kWidth = 16;
using Vector [[gnu::vector_size(kWidth)]] = unsigned char;

template <typename Comparison>
std::uint64_t Bits(Comparison equal) {
  return static_cast<std::uint32_t>(_mm_movemask_epi8(reinterpret_cast<__m128i>(equal)));
}

#include "mail/byte_loops.h"
#undef BRINDLE_TARGET
constexpr ByteKernels kKernels = {"sse2", LineEnds, Pairs};

}  // namespace sse2

#endif

// Windows has no AVX2: there GCC aligns the stack to 16 bytes, and may put a register of 32 on it
// as if it were aligned.
#if defined(__x86_64__) && !defined(_WIN32)

// Each function is compiled for its own instructions, so that the program as a whole runs on any
// x86-64.
namespace avx2 {

#define BRINDLE_TARGET __attribute__((target("avx2")))
constexpr size_t kWidth = 32;
using Vector [[gnu::vector_size(kWidth)]] = unsigned char;

template <typename Comparison>
BRINDLE_TARGET std::uint64_t Bits(Comparison equal) {
  return static_cast<std::uint32_t>(_mm256_movemask_epi8(reinterpret_cast<__m256i>(equal)));
}

#include "mail/byte_loops.h"
#undef BRINDLE_TARGET
constexpr ByteKernels kKernels = {"avx2", LineEnds, Pairs};

}  // namespace avx2

const ByteKernels* WithAvx2() { return __builtin_cpu_supports("avx2") ? &avx2::kKernels : nullptr; }

#else

const ByteKernels* WithAvx2() { return nullptr; }

#endif

const ByteKernels*& InUse() {
  static const ByteKernels* inUse = nullptr;
  return inUse;
}

}  // namespace

const ByteKernels* const* AllKernels() {
  static const ByteKernels* const all[] = {&portable::kKernels,
#ifdef __x86_64__
                                           &sse2::kKernels,
#endif
                                           WithAvx2(), nullptr};
  return all;
}

void UseKernels(const ByteKernels* kernels) {
  const ByteKernels* const* best = AllKernels();
  while (best[1] != nullptr) ++best;
  InUse() = kernels != nullptr ? kernels : *best;
}

const ByteKernels& Kernels() {
  if (InUse() == nullptr) UseKernels(nullptr);
  return *InUse();
}

}  // namespace brindle
