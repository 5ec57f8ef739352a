#include "data/sparse_xform.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace {

// The identity held as no room multiplies as the kernel's identity does, bit for bit, whatever
// the other factor: its zeros of either sign, a move, a turn, a perspective, values not finite.
TEST(SparseXformTest, TheIdentitysProductIsTheKernelsBitForBit) {
  ZK_Xform negative_zeros = ZK_Xform::Translation(-0.0, 5, -0.0);
  negative_zeros[0][1] = -0.0;
  negative_zeros[3][2] = -0.0;
  ZK_Xform perspective = ZK_Xform::Rotation(0.3, {1, 1, 0}, {0, 4, 0});
  perspective[3][0] = 0.25;
  perspective[2][1] = -0.0;
  ZK_Xform not_finite = ZK_Xform::Translation(1, 2, 3);
  not_finite[1][2] = std::numeric_limits<double>::infinity();
  const ZK_Xform factors[] = {ZK_Xform(),
                              negative_zeros,
                              ZK_Xform::Scale(2, -0.0, 1),
                              ZK_Xform::Rotation(-1.1, {0, 0, 1}, {7, -3, 2}),
                              perspective,
                              not_finite};
  const CKorvoSparseXform identity;
  CKorvoSparseXform turn;
  turn = ZK_Xform::Rotation(0.5, {0, 1, 0}, {1, 2, 3});
  for (const ZK_Xform& factor : factors) {
    const ZK_Xform kernels = ZK_Xform() * factor, held = identity * factor;
    EXPECT_EQ(std::memcmp(&kernels, &held, sizeof(ZK_Xform)), 0);
    const ZK_Xform turned = turn.Get() * factor, held_turned = turn * factor;
    EXPECT_EQ(std::memcmp(&turned, &held_turned, sizeof(ZK_Xform)), 0);
  }
}

}  // namespace
