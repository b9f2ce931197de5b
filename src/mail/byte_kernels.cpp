#include "mail/byte_kernels.h"

#include <bit>
#include <cstring>

namespace brindle {
namespace {

using Word = std::uint64_t;
constexpr size_t kWord = sizeof(Word);
constexpr Word kOnes = 0x0101010101010101U;
constexpr Word kTops = 0x8080808080808080U;

// The first byte is the lowest one, whatever the machine.
Word Load(const char* text) {
  Word word = 0;
  std::memcpy(&word, text, kWord);
  if constexpr (std::endian::native == std::endian::big) {
    Word turned = 0;
    for (size_t i = 0; i < kWord; ++i) turned |= (word >> (8 * i) & 0xFFU) << (8 * (kWord - 1 - i));
    return turned;
  }
  return word;
}

// A top bit for each byte of `word` that is `wanted`.
Word Equal(Word word, char wanted) {
  const Word difference = word ^ (kOnes * static_cast<unsigned char>(wanted));
  return ~(((difference & ~kTops) + ~kTops) | difference) & kTops;
}

// The top bits of eight bytes as eight neighbouring bits.
Word Gather(Word tops) { return ((tops >> 7U) * 0x0102040810204080U) >> 56U; }

bool LowerAscii(const char* from, char* to, size_t size) {
  unsigned char seen = 0;
  // Without a branch, so that the compiler can do many bytes at once.
  for (size_t i = 0; i < size; ++i) {
    const auto c = static_cast<unsigned char>(from[i]);
    seen |= c;
    const bool upper = static_cast<unsigned char>(c - 'A') < 26;
    to[i] = static_cast<char>(c | (upper ? 0x20U : 0U));
  }
  return seen < 0x80;
}

bool IsAsciiText(const char* text, size_t size) {
  unsigned char seen = 0;
  for (size_t i = 0; i < size; ++i) seen |= static_cast<unsigned char>(text[i]);
  return seen < 0x80;
}

void LineEnds(const char* text, Word* mask, size_t masks) {
  for (size_t m = 0; m < masks; ++m) {
    Word bits = 0;
    for (size_t i = 0; i < kMaskBytes; i += kWord) {
      const Word word = Load(text + m * kMaskBytes + i);
      const Word tops = Equal(word, '\n') | Equal(word, '\r');
      if (tops != 0) bits |= Gather(tops) << i;
    }
    mask[m] = bits;
  }
}

bool Pairs(const char* a, char wantedA, const char* b, char wantedB, Word* mask, size_t masks) {
  Word any = 0;
  for (size_t m = 0; m < masks; ++m) {
    Word bits = 0;
    for (size_t i = 0; i < kMaskBytes; i += kWord) {
      const size_t at = m * kMaskBytes + i;
      const Word tops = Equal(Load(a + at), wantedA) & Equal(Load(b + at), wantedB);
      if (tops != 0) bits |= Gather(tops) << i;
    }
    mask[m] = bits;
    any |= bits;
  }
  return any != 0;
}

constexpr ByteKernels kPortable = {"portable", LowerAscii, IsAsciiText, LineEnds, Pairs};

const ByteKernels* Best() {
  if (const ByteKernels* kernels = Avx2Kernels()) return kernels;
  if (const ByteKernels* kernels = Sse2Kernels()) return kernels;
  return &kPortable;
}

const ByteKernels*& InUse() {
  static const ByteKernels* inUse = Best();
  return inUse;
}

}  // namespace

const ByteKernels* PortableKernels() { return &kPortable; }

const ByteKernels& Kernels() { return *InUse(); }

void UseKernels(const ByteKernels* kernels) { InUse() = kernels != nullptr ? kernels : Best(); }

const ByteKernels* const* AllKernels() {
  static const ByteKernels* const all[] = {
      &kPortable, Sse2Kernels() != nullptr ? Sse2Kernels() : Avx2Kernels(),
      Sse2Kernels() != nullptr ? Avx2Kernels() : nullptr, nullptr};
  return all;
}

}  // namespace brindle
