#include "host/zefkit/standin/zk_point_geometry.h"

#include <gtest/gtest.h>

#include <vector>

#include "host/zefkit/zk_archive.h"

namespace {

std::vector<unsigned char> Written(const ZK_PointGeometry& geometry) {
  ZK_BinaryMemoryArchive out;
  EXPECT_TRUE(geometry.Write(out));
  return out.Bytes();
}

TEST(ZkPointGeometry, ReadTakesOnlyAValidNumberOfPoints) {
  ZK_BinaryMemoryArchive one_point(Written(ZK_Polyline({{1, 2, 3}})));
  ZK_Polyline line;
  EXPECT_FALSE(line.Read(one_point));
  EXPECT_TRUE(line.Points().empty());
  ZK_BinaryMemoryArchive seven_points(Written(ZK_Polyline(std::vector<ZK_3dPoint>(7))));
  ZK_Box box({1, 2, 3}, {4, 5, 6});
  EXPECT_FALSE(box.Read(seven_points));  // and stays as it was
  ZK_BinaryMemoryArchive whole_box(Written(box));
  ZK_Box copy;
  ASSERT_TRUE(copy.Read(whole_box));
  EXPECT_EQ(Written(copy), Written(box));  // the eight corners, coordinate for coordinate
}

}  // namespace
