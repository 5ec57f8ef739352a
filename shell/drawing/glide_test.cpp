#include "shell/drawing/glide.h"

#include <gtest/gtest.h>

#include "shell/drawing/test_scenes.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

void ExpectNear(const TsVec3& a, const TsVec3& b) {
  EXPECT_NEAR(a.x, b.x, 1e-9);
  EXPECT_NEAR(a.y, b.y, 1e-9);
  EXPECT_NEAR(a.z, b.z, 1e-9);
}

std::vector<TsVec3> Turned(const std::vector<TsVec3>& points, const TsQuat& turn,
                           const TsVec3& shift) {
  std::vector<TsVec3> moved;
  for (const TsVec3& p : points) moved.push_back(turn.Rotate(p) + shift);
  return moved;
}

TEST(GlideTest, ARigidMoveGlidesItsCentreStraightAndTurnsBySlerpAndAnythingElsePointByPoint) {
  const std::vector<TsVec3> from = TestBox("", {0, 0, 0}, {2, 1, 1}).points;
  const TsQuat turn = TsQuat::AxisAngle({0, 0, 1}, kPi / 2);
  const std::vector<TsVec3> to = Turned(from, turn, {10, 4, 2});
  TsQuat rotation;
  TsVec3 translation;
  ASSERT_TRUE(TsRigidMove(from, to, 1e-9, rotation, translation));
  EXPECT_NEAR(rotation.Angle(), kPi / 2, 1e-9);
  ExpectNear(translation, {10, 4, 2});

  const TsGlide glide(from, to);
  EXPECT_TRUE(glide.Rigid());
  std::vector<TsVec3> points;
  glide.At(0, points);
  for (size_t i = 0; i < from.size(); ++i) ExpectNear(points[i], from[i]);
  glide.At(1, points);
  EXPECT_EQ(points, to) << "the end is exactly where the object is";
  // Half way: the centre half way along the line, the box turned by half the angle, its shape
  // kept.
  glide.At(0.5, points);
  const TsVec3 centre_from{1, 0.5, 0.5};
  const TsVec3 centre_to = turn.Rotate(centre_from) + TsVec3{10, 4, 2};
  TsVec3 centre;
  for (const TsVec3& p : points) centre += p * (1.0 / 8);
  ExpectNear(centre, (centre_from + centre_to) * 0.5);
  const TsVec3 edge = points[1] - points[0];
  EXPECT_NEAR(Length(edge), 2, 1e-9);
  EXPECT_NEAR(std::atan2(edge.y, edge.x), kPi / 4, 1e-9);

  // Stretched or mirrored, the box glides point by point.
  const std::vector<TsVec3> cube = TestBox("", {0, 0, 0}, {1, 1, 1}).points;
  const std::vector<TsVec3> stretched = TestBox("", {0, 0, 0}, {3, 1, 1}).points;
  EXPECT_FALSE(TsRigidMove(cube, stretched, 1e-9, rotation, translation));
  const TsGlide stretch(cube, stretched);
  EXPECT_FALSE(stretch.Rigid());
  stretch.At(0.5, points);
  ExpectNear(points[1], {2, 0, 0});
  std::vector<TsVec3> mirrored = cube;
  for (TsVec3& p : mirrored) p.x = -p.x;
  EXPECT_FALSE(TsRigidMove(cube, mirrored, 1e-9, rotation, translation));
  // One point, or points on a line, move rigidly too.
  EXPECT_TRUE(TsRigidMove({{1, 1, 1}}, {{4, 5, 6}}, 1e-9, rotation, translation));
  ExpectNear(translation, {3, 4, 5});
  EXPECT_TRUE(
      TsRigidMove({{0, 0, 0}, {1, 0, 0}}, {{0, 0, 0}, {0, 0, 1}}, 1e-9, rotation, translation));
  EXPECT_NEAR(rotation.Angle(), kPi / 2, 1e-9);
  // Different counts: shown where the object is now.
  const TsGlide changed({{0, 0, 0}}, {{1, 1, 1}, {2, 2, 2}});
  changed.At(0.3, points);
  EXPECT_EQ(points, (std::vector<TsVec3>{{1, 1, 1}, {2, 2, 2}}));
}

}  // namespace
