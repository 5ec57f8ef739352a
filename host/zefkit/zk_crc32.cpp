#include "host/zefkit/zk_crc32.h"

unsigned int ZK_CRC32(unsigned int crc, size_t size, const void* buffer) {
  if (buffer == nullptr) return crc;
  const auto* bytes = static_cast<const unsigned char*>(buffer);
  crc = ~crc;
  for (size_t i = 0; i < size; ++i) {
    crc ^= bytes[i];
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) ? (crc >> 1) ^ 0xEDB88320u : crc >> 1;
  }
  return ~crc;
}
