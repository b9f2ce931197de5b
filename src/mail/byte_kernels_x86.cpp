// The kernels in SSE2, which every x86-64 machine has, and in AVX2. Each function is compiled for
// its own instructions, so that the program as a whole runs on any x86-64. Windows has SSE2 only:
// there GCC aligns the stack to 16 bytes, and may put a register of 32 on it as if it were aligned.

#include "mail/byte_kernels.h"

#if defined(__x86_64__) || defined(_M_X64)

#include <immintrin.h>

namespace brindle {
namespace {

// 'A' to 'Z' moved down to the lowest signed bytes, where one comparison finds them.
constexpr char kToLowest = static_cast<char>(-128 - 'A');
constexpr char kAboveLetters = -128 + 26;
constexpr char kCaseBit = 0x20;

bool LowerTail(const char* from, char* to, size_t size) {
  return PortableKernels()->lowerAscii(from, to, size);
}

// 16 bytes at a time.

__m128i Load16(const char* at) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at)); }

bool Sse2LowerAscii(const char* from, char* to, size_t size) {
  __m128i seen = _mm_setzero_si128();
  size_t i = 0;
  for (; i + 16 <= size; i += 16) {
    const __m128i text = Load16(from + i);
    seen = _mm_or_si128(seen, text);
    const __m128i moved = _mm_add_epi8(text, _mm_set1_epi8(kToLowest));
    const __m128i upper = _mm_cmplt_epi8(moved, _mm_set1_epi8(kAboveLetters));
    const __m128i bit = _mm_and_si128(upper, _mm_set1_epi8(kCaseBit));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), _mm_or_si128(text, bit));
  }
  const bool ascii = LowerTail(from + i, to + i, size - i);
  return ascii && _mm_movemask_epi8(seen) == 0;
}

bool Sse2IsAscii(const char* text, size_t size) {
  __m128i seen = _mm_setzero_si128();
  size_t i = 0;
  for (; i + 16 <= size; i += 16) seen = _mm_or_si128(seen, Load16(text + i));
  return _mm_movemask_epi8(seen) == 0 && PortableKernels()->isAscii(text + i, size - i);
}

std::uint64_t Bits16(__m128i matches) {
  return static_cast<std::uint32_t>(_mm_movemask_epi8(matches));
}

void Sse2LineEnds(const char* text, std::uint64_t* mask, size_t masks) {
  const __m128i lf = _mm_set1_epi8('\n');
  const __m128i cr = _mm_set1_epi8('\r');
  for (size_t m = 0; m < masks; ++m, text += kMaskBytes) {
    std::uint64_t bits = 0;
    for (unsigned i = 0; i < kMaskBytes; i += 16) {
      const __m128i part = Load16(text + i);
      bits |= Bits16(_mm_or_si128(_mm_cmpeq_epi8(part, lf), _mm_cmpeq_epi8(part, cr))) << i;
    }
    mask[m] = bits;
  }
}

bool Sse2Pairs(const char* a, char wantedA, const char* b, char wantedB, std::uint64_t* mask,
               size_t masks) {
  const __m128i allA = _mm_set1_epi8(wantedA);
  const __m128i allB = _mm_set1_epi8(wantedB);
  std::uint64_t any = 0;
  for (size_t m = 0; m < masks; ++m, a += kMaskBytes, b += kMaskBytes) {
    std::uint64_t bits = 0;
    for (unsigned i = 0; i < kMaskBytes; i += 16) {
      bits |= Bits16(_mm_and_si128(_mm_cmpeq_epi8(Load16(a + i), allA),
                                   _mm_cmpeq_epi8(Load16(b + i), allB)))
              << i;
    }
    mask[m] = bits;
    any |= bits;
  }
  return any != 0;
}

constexpr ByteKernels kSse2 = {"sse2", Sse2LowerAscii, Sse2IsAscii, Sse2LineEnds, Sse2Pairs};

}  // namespace

const ByteKernels* Sse2Kernels() { return &kSse2; }

}  // namespace brindle

#else

const brindle::ByteKernels* brindle::Sse2Kernels() { return nullptr; }

#endif

#if defined(__x86_64__) && !defined(_WIN32)

#define BRINDLE_AVX2 __attribute__((target("avx2")))

namespace brindle {
namespace {

// 32 bytes at a time.

BRINDLE_AVX2 __m256i Load32(const char* at) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
}

BRINDLE_AVX2 std::uint64_t Bits64(__m256i low, __m256i high) {
  const std::uint64_t lowBits = static_cast<std::uint32_t>(_mm256_movemask_epi8(low));
  const std::uint64_t highBits = static_cast<std::uint32_t>(_mm256_movemask_epi8(high));
  return lowBits | highBits << 32U;
}

BRINDLE_AVX2 bool Avx2LowerAscii(const char* from, char* to, size_t size) {
  __m256i seen = _mm256_setzero_si256();
  size_t i = 0;
  for (; i + 32 <= size; i += 32) {
    const __m256i text = Load32(from + i);
    seen = _mm256_or_si256(seen, text);
    const __m256i moved = _mm256_add_epi8(text, _mm256_set1_epi8(kToLowest));
    const __m256i upper = _mm256_cmpgt_epi8(_mm256_set1_epi8(kAboveLetters), moved);
    const __m256i bit = _mm256_and_si256(upper, _mm256_set1_epi8(kCaseBit));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to + i), _mm256_or_si256(text, bit));
  }
  const bool ascii = LowerTail(from + i, to + i, size - i);
  return ascii && _mm256_movemask_epi8(seen) == 0;
}

BRINDLE_AVX2 bool Avx2IsAscii(const char* text, size_t size) {
  __m256i seen = _mm256_setzero_si256();
  size_t i = 0;
  for (; i + 32 <= size; i += 32) seen = _mm256_or_si256(seen, Load32(text + i));
  return _mm256_movemask_epi8(seen) == 0 && PortableKernels()->isAscii(text + i, size - i);
}

BRINDLE_AVX2 void Avx2LineEnds(const char* text, std::uint64_t* mask, size_t masks) {
  const __m256i lf = _mm256_set1_epi8('\n');
  const __m256i cr = _mm256_set1_epi8('\r');
  for (size_t m = 0; m < masks; ++m, text += kMaskBytes) {
    const __m256i low = Load32(text);
    const __m256i high = Load32(text + 32);
    mask[m] = Bits64(_mm256_or_si256(_mm256_cmpeq_epi8(low, lf), _mm256_cmpeq_epi8(low, cr)),
                     _mm256_or_si256(_mm256_cmpeq_epi8(high, lf), _mm256_cmpeq_epi8(high, cr)));
  }
}

BRINDLE_AVX2 bool Avx2Pairs(const char* a, char wantedA, const char* b, char wantedB,
                            std::uint64_t* mask, size_t masks) {
  const __m256i allA = _mm256_set1_epi8(wantedA);
  const __m256i allB = _mm256_set1_epi8(wantedB);
  std::uint64_t any = 0;
  for (size_t m = 0; m < masks; ++m, a += kMaskBytes, b += kMaskBytes) {
    const __m256i low =
        _mm256_and_si256(_mm256_cmpeq_epi8(Load32(a), allA), _mm256_cmpeq_epi8(Load32(b), allB));
    const __m256i high = _mm256_and_si256(_mm256_cmpeq_epi8(Load32(a + 32), allA),
                                          _mm256_cmpeq_epi8(Load32(b + 32), allB));
    mask[m] = Bits64(low, high);
    any |= mask[m];
  }
  return any != 0;
}

constexpr ByteKernels kAvx2 = {"avx2", Avx2LowerAscii, Avx2IsAscii, Avx2LineEnds, Avx2Pairs};

}  // namespace

const ByteKernels* Avx2Kernels() { return __builtin_cpu_supports("avx2") ? &kAvx2 : nullptr; }

}  // namespace brindle

#else

const brindle::ByteKernels* brindle::Avx2Kernels() { return nullptr; }

#endif
