#include "host/zefkit/zk_crc16.h"

#include <gtest/gtest.h>

namespace {

TEST(ZkCrc16, MatchesTheCheckValueAndContinuesAcrossPieces) {
  const char* text = "123456789";
  EXPECT_EQ(ZK_CRC16(0, 9, text), 0x31C3);
  EXPECT_EQ(ZK_CRC16(ZK_CRC16(0, 4, text), 5, text + 4), 0x31C3);
  EXPECT_EQ(ZK_CRC16(0x1234, 9, nullptr), 0x1234);
}

}  // namespace
