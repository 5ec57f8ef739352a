#include "host/zefkit/zk_crc32.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// The check a bit at a time, as the polynomial defines it.
unsigned int BitwiseCrc(const std::vector<unsigned char>& bytes) {
  unsigned int crc = 0xFFFFFFFFu;
  for (unsigned char byte : bytes) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) ? (crc >> 1) ^ 0xEDB88320u : crc >> 1;
  }
  return ~crc;
}

TEST(ZkCrc32, AgreesWithTheBitwiseCheckAtEveryLengthAndSplit) {
  EXPECT_EQ(ZK_CRC32(0, 9, "123456789"), 0xCBF43926u);
  EXPECT_EQ(ZK_CRC32(0x1234, 9, nullptr), 0x1234u);
  std::vector<unsigned char> bytes;
  unsigned int state = 12345;
  for (int i = 0; i < 600; ++i) {
    state = state * 1103515245u + 12345u;
    bytes.push_back(static_cast<unsigned char>(state >> 16));
  }
  for (size_t length = 0; length <= bytes.size(); ++length) {
    const std::vector<unsigned char> prefix(bytes.begin(), bytes.begin() + length);
    const unsigned int expected = BitwiseCrc(prefix);
    ASSERT_EQ(ZK_CRC32(0, length, bytes.data()), expected) << length;
    const size_t split = length / 3;
    ASSERT_EQ(ZK_CRC32(ZK_CRC32(0, split, bytes.data()), length - split, bytes.data() + split),
              expected)
        << length;
  }
}

}  // namespace
