// The loops of the byte kernels for registers of kWidth bytes. It is included once for each width,
// inside a namespace that has kWidth, Vector and Bits, with BRINDLE_TARGET naming the instructions.

BRINDLE_TARGET inline Vector At(const char* place) {
  Vector bytes;
  std::memcpy(&bytes, place, sizeof bytes);
  return bytes;
}

BRINDLE_TARGET inline void LineEnds(const char* text, std::uint64_t* mask, size_t masks) {
  for (size_t m = 0; m < masks; ++m, text += kMaskBytes) {
    std::uint64_t bits = 0;
    for (size_t i = 0; i < kMaskBytes; i += kWidth) {
      const Vector part = At(text + i);
      const Vector next = At(text + i + 1);
      bits |= Bits((part == Byte('\n')) | ((part == Byte('\r')) & (next != Byte('\n')))) << i;
    }
    mask[m] = bits;
  }
}

BRINDLE_TARGET inline bool Pairs(const char* a, EitherByte wantedA, const char* b,
                                 EitherByte wantedB, std::uint64_t* mask, size_t masks) {
  std::uint64_t any = 0;
  for (size_t m = 0; m < masks; ++m, a += kMaskBytes, b += kMaskBytes) {
    std::uint64_t bits = 0;
    for (size_t i = 0; i < kMaskBytes; i += kWidth) {
      const Vector partA = At(a + i);
      const Vector partB = At(b + i);
      bits |= Bits(((partA == Byte(wantedA.lower)) | (partA == Byte(wantedA.upper))) &
                   ((partB == Byte(wantedB.lower)) | (partB == Byte(wantedB.upper))))
              << i;
    }
    mask[m] = bits;
    any |= bits;
  }
  return any != 0;
}
