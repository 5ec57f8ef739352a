#include "host/zk_array.h"

#include <gtest/gtest.h>

#include <vector>

#include "host/c_array.h"
#include "host/zk_crc16.h"

namespace {

std::vector<int> Contents(const ZK_SimpleArray<int>& a) {
  return std::vector<int>(a.Array(), a.Array() + a.Count());
}

std::vector<int> Contents(const CArray<int>& a) {
  return std::vector<int>(a.GetData(), a.GetData() + a.GetSize());
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

TEST(ZkQsort, SortsWithTheComparison) {
  int values[] = {5, -3, 9, 0, 5, -7};
  ZK_qsort(values, 6, sizeof(int), [](const void* a, const void* b) {
    const int x = *static_cast<const int*>(a), y = *static_cast<const int*>(b);
    return x < y ? -1 : (x > y ? 1 : 0);
  });
  EXPECT_EQ(std::vector<int>(values, values + 6), (std::vector<int>{-7, -3, 0, 5, 5, 9}));
}

TEST(ZkCrc16, MatchesTheCheckValueAndContinuesAcrossPieces) {
  const char* text = "123456789";
  EXPECT_EQ(ZK_CRC16(0, 9, text), 0x31C3);
  EXPECT_EQ(ZK_CRC16(ZK_CRC16(0, 4, text), 5, text + 4), 0x31C3);
  EXPECT_EQ(ZK_CRC16(0x1234, 9, nullptr), 0x1234);
}

TEST(ZkHostCArray, InsertRemoveAndEmpty) {
  CArray<int> a;
  for (int i = 0; i < 5; ++i) EXPECT_EQ(a.Add(i * 10), i);
  a.RemoveAt(1);
  a.RemoveAt(1, 2);
  EXPECT_EQ(Contents(a), (std::vector<int>{0, 40}));
  a.InsertAt(1, 7, 2);
  a.InsertAt(0, -1);
  EXPECT_EQ(Contents(a), (std::vector<int>{-1, 0, 7, 7, 40}));
  a.RemoveAll();
  EXPECT_TRUE(a.IsEmpty());
}

}  // namespace
