#include "host/zefkit/zk_crc16.h"

unsigned short ZK_CRC16(unsigned short remainder, size_t size, const void* buffer) {
  if (buffer == nullptr) return remainder;
  const auto* bytes = static_cast<const unsigned char*>(buffer);
  unsigned int crc = remainder;
  for (size_t i = 0; i < size; ++i) {
    crc ^= static_cast<unsigned int>(bytes[i]) << 8;
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 0x8000) ? (crc << 1) ^ 0x1021 : crc << 1;
  }
  return static_cast<unsigned short>(crc);
}
