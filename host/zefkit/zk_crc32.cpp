#include "host/zefkit/zk_crc32.h"

#include <array>
#include <cstdint>

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

}  // namespace

unsigned int ZK_CRC32(unsigned int crc, size_t size, const void* buffer) {
  if (buffer == nullptr) return crc;
  const Tables& t = CrcTables();
  const auto* bytes = static_cast<const unsigned char*>(buffer);
  uint32_t c = ~static_cast<uint32_t>(crc);
  for (; size >= 8; size -= 8, bytes += 8) {
    const uint32_t low = c ^ LittleEndianWord(bytes);
    const uint32_t high = LittleEndianWord(bytes + 4);
    c = t[7][low & 0xFF] ^ t[6][(low >> 8) & 0xFF] ^ t[5][(low >> 16) & 0xFF] ^ t[4][low >> 24] ^
        t[3][high & 0xFF] ^ t[2][(high >> 8) & 0xFF] ^ t[1][(high >> 16) & 0xFF] ^ t[0][high >> 24];
  }
  for (; size > 0; --size, ++bytes) c = (c >> 8) ^ t[0][(c ^ *bytes) & 0xFF];
  return ~c;
}
