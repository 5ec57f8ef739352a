#include "host/zefkit/zk_crc32.h"

#include <gtest/gtest.h>

namespace {

TEST(ZkCrc32, MatchesTheCheckValueAndContinuesAcrossPieces) {
  const char* text = "123456789";
  EXPECT_EQ(ZK_CRC32(0, 9, text), 0xCBF43926u);
  EXPECT_EQ(ZK_CRC32(ZK_CRC32(0, 4, text), 5, text + 4), 0xCBF43926u);
  EXPECT_EQ(ZK_CRC32(0x1234, 9, nullptr), 0x1234u);
}

}  // namespace
