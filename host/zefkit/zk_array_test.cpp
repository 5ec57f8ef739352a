#include "host/zefkit/zk_array.h"

#include <gtest/gtest.h>

#include <vector>

#include "host/zefkit/zk_crc16.h"

namespace {

std::vector<int> Contents(const ZK_SimpleArray<int>& a) {
  return std::vector<int>(a.Array(), a.Array() + a.Count());
}

TEST(ZkSimpleArray, InsertAndRemoveKeepOrderAndIgnoreBadIndexes) {
  ZK_SimpleArray<int> a;
  a.Append(1);
  a.Append(3);
  a.Insert(1, 2);
  for (int index : {0, 4, 6, -1}) a.Insert(index, index);  // 6 and -1 are out of range
  EXPECT_EQ(Contents(a), (std::vector<int>{0, 1, 2, 3, 4}));
  for (int index : {2, 5, -1, 3}) a.Remove(index);  // 5 and -1 are out of range
  EXPECT_EQ(Contents(a), (std::vector<int>{0, 1, 3}));
  EXPECT_EQ(*a.At(2), 3);
  EXPECT_EQ(a.At(3), nullptr);
  EXPECT_EQ(a.At(-1), nullptr);
}

TEST(ZkCrc16, MatchesTheCheckValueAndContinuesAcrossPieces) {
  const char* text = "123456789";
  EXPECT_EQ(ZK_CRC16(0, 9, text), 0x31C3);
  EXPECT_EQ(ZK_CRC16(ZK_CRC16(0, 4, text), 5, text + 4), 0x31C3);
  EXPECT_EQ(ZK_CRC16(0x1234, 9, nullptr), 0x1234);
}

}  // namespace
