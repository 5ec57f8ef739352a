#include "host/zefkit/zk_xform.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

namespace {

TEST(ZkXform, ProductAppliesTheRightFactorFirst) {
  const ZK_Xform translate = ZK_Xform::Translation(1, 2, 3);
  const ZK_Xform scale = ZK_Xform::Scale(2, 3, 4);
  const ZK_3dPoint a = (scale * translate) * ZK_3dPoint{1, 1, 1};  // translate, then scale
  const ZK_3dPoint b = (translate * scale) * ZK_3dPoint{1, 1, 1};  // scale, then translate
  EXPECT_EQ(std::make_tuple(a.x, a.y, a.z), std::make_tuple(4.0, 9.0, 16.0));
  EXPECT_EQ(std::make_tuple(b.x, b.y, b.z), std::make_tuple(3.0, 5.0, 7.0));
}

TEST(ZkXformInverse, UndoesGeneralFarAndProjectiveMatricesAndOfASingularMatrixIsZero) {
  ZK_Xform projective = ZK_Xform::Rotation(1.1, {0, 1, 1}, {2, 0, 0});
  projective(3, 0) = 0.25;
  projective(3, 2) = -0.5;
  const ZK_Xform general = ZK_Xform::Translation(3, -7, 11) *
                           ZK_Xform::Rotation(0.7, {1, 2, 3}, {4, 5, 6}) *
                           ZK_Xform::Scale(2, 0.5, 8);
  for (const auto& [x, tolerance] :  // each with the tolerance its products must meet
       {std::make_pair(general, 1e-12), std::make_pair(projective, 1e-9),
        std::make_pair(ZK_Xform::Translation(1e13, 0, 0) * ZK_Xform::Scale(1e-3, 1, 1), 1e-9)}) {
    double pivot = -1;
    const ZK_Xform inverse = x.Inverse(&pivot);
    EXPECT_GT(pivot, 0);
    EXPECT_TRUE((inverse * x).IsIdentity(tolerance)) << (inverse * x)(0, 0) << " " << tolerance;
    EXPECT_TRUE((x * inverse).IsIdentity(tolerance)) << (x * inverse)(0, 3) << " " << tolerance;
  }

  const ZK_Xform flattened = ZK_Xform::Rotation(0.3, {1, 1, 0}, {1, 2, 3}) *
                             ZK_Xform::Scale(0, 1, 1) * ZK_Xform::Rotation(1.2, {0, 1, 2}, {});
  for (const ZK_Xform& singular : {ZK_Xform::Scale(1, 0, 2), ZK_Xform(0.0), flattened}) {
    double pivot = -1;
    EXPECT_EQ(singular.Inverse(&pivot), ZK_Xform(0.0));
    EXPECT_EQ(pivot, 0);
  }
}

}  // namespace
