#include "host/zefkit/zk_crc32.h"

#include <array>
#include <cstdint>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace {

// Eight tables, each the previous one advanced by a byte, so that the loop folds eight bytes at
// once (slicing by eight): a model file's blocks are megabytes, and a byte at a time made the
// check most of the cost of a save.
using Tables = std::array<std::array<uint32_t, 256>, 8>;

Tables MakeTables() {
  Tables tables{};
  for (uint32_t i = 0; i < 256; ++i) {
    uint32_t crc = i;
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) ? (crc >> 1) ^ 0xEDB88320u : crc >> 1;
    tables[0][i] = crc;
  }
  for (uint32_t i = 0; i < 256; ++i) {
    for (size_t t = 1; t < tables.size(); ++t) {
      tables[t][i] = (tables[t - 1][i] >> 8) ^ tables[0][tables[t - 1][i] & 0xFF];
    }
  }
  return tables;
}

const Tables& CrcTables() {
  static const Tables tables = MakeTables();
  return tables;
}

uint32_t LittleEndianWord(const unsigned char* bytes) {
  return static_cast<uint32_t>(bytes[0]) | static_cast<uint32_t>(bytes[1]) << 8 |
         static_cast<uint32_t>(bytes[2]) << 16 | static_cast<uint32_t>(bytes[3]) << 24;
}

// Continues the inverted check `c` over `size` bytes, eight at a time through the tables.
uint32_t TableCrc(uint32_t c, const unsigned char* bytes, size_t size) {
  const Tables& t = CrcTables();
  for (; size >= 8; size -= 8, bytes += 8) {
    const uint32_t low = c ^ LittleEndianWord(bytes);
    const uint32_t high = LittleEndianWord(bytes + 4);
    c = t[7][low & 0xFF] ^ t[6][(low >> 8) & 0xFF] ^ t[5][(low >> 16) & 0xFF] ^ t[4][low >> 24] ^
        t[3][high & 0xFF] ^ t[2][(high >> 8) & 0xFF] ^ t[1][(high >> 16) & 0xFF] ^ t[0][high >> 24];
  }
  for (; size > 0; --size, ++bytes) c = (c >> 8) ^ t[0][(c ^ *bytes) & 0xFF];
  return c;
}

#if defined(__x86_64__)
// The functions below use instructions that CanFold finds on the processor before any runs.
#define ZK_FOLDING __attribute__((target("pclmul,sse4.1")))

ZK_FOLDING __m128i Load(const unsigned char* at) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

// `a` moved on by the distance that `k` holds, plus `b`.
ZK_FOLDING __m128i Fold(__m128i a, __m128i k, __m128i b) {
  return _mm_xor_si128(
      _mm_xor_si128(_mm_clmulepi64_si128(a, k, 0x00), _mm_clmulepi64_si128(a, k, 0x11)), b);
}

// Carry-less multiplication folds the bytes 64 at a time, in four lanes of 128 bits, at several
// bytes a cycle where the tables take more than one cycle a byte. The constants are powers of x
// modulo the polynomial, bit-reflected: x^(4*128+32) and x^(4*128-32) move a lane 512 bits on,
// x^(128+32) and x^(128-32) move it 128 bits on, x^64 folds 128 bits to 64; the last pair is the
// polynomial and its Barrett quotient. Takes a multiple of 16 bytes, at least 64.
ZK_FOLDING uint32_t FoldingCrc(uint32_t c, const unsigned char* bytes, size_t size) {
  const __m128i by_512 = _mm_set_epi64x(0x01c6e41596, 0x0154442bd4);
  const __m128i by_128 = _mm_set_epi64x(0x00ccaa009e, 0x01751997d0);
  const __m128i to_64 = _mm_set_epi64x(0, 0x0163cd6124);
  const __m128i barrett = _mm_set_epi64x(0x01f7011641, 0x01db710641);
  const __m128i low_32s = _mm_setr_epi32(~0, 0, ~0, 0);
  __m128i lane[4] = {_mm_xor_si128(Load(bytes), _mm_cvtsi32_si128(static_cast<int>(c))),
                     Load(bytes + 16), Load(bytes + 32), Load(bytes + 48)};
  bytes += 64;
  size -= 64;
  for (; size >= 64; size -= 64, bytes += 64) {
    for (int i = 0; i < 4; ++i) lane[i] = Fold(lane[i], by_512, Load(bytes + 16 * i));
  }
  __m128i x = Fold(Fold(Fold(lane[0], by_128, lane[1]), by_128, lane[2]), by_128, lane[3]);
  for (; size >= 16; size -= 16, bytes += 16) x = Fold(x, by_128, Load(bytes));
  // 128 bits to 64, then Barrett's reduction to the 32 bits of the check.
  x = _mm_xor_si128(_mm_srli_si128(x, 8), _mm_clmulepi64_si128(x, by_128, 0x10));
  x = _mm_xor_si128(_mm_srli_si128(x, 4),
                    _mm_clmulepi64_si128(_mm_and_si128(x, low_32s), to_64, 0x00));
  __m128i q = _mm_clmulepi64_si128(_mm_and_si128(x, low_32s), barrett, 0x10);
  q = _mm_clmulepi64_si128(_mm_and_si128(q, low_32s), barrett, 0x00);
  return static_cast<uint32_t>(_mm_extract_epi32(_mm_xor_si128(x, q), 1));
}

bool CanFold() {
  static const bool can = __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse4.1");
  return can;
}
#endif

}  // namespace

unsigned int ZK_CRC32(unsigned int crc, size_t size, const void* buffer) {
  if (buffer == nullptr) return crc;
  const auto* bytes = static_cast<const unsigned char*>(buffer);
  uint32_t c = ~static_cast<uint32_t>(crc);
#if defined(__x86_64__)
  if (size >= 64 && CanFold()) {
    const size_t folded = size & ~static_cast<size_t>(15);
    c = FoldingCrc(c, bytes, folded);
    bytes += folded;
    size -= folded;
  }
#endif
  return ~TableCrc(c, bytes, size);
}
