#include "shell/drawing/camera.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

// A camera on a 200 × 100 viewport, looking at the origin at 10 pixels per unit.
TsCamera CameraAt(TsStandardView view, TsProjection projection = TsProjection::orthographic) {
  TsCamera camera;
  camera.SetViewport(200, 100);
  camera.SetStandardView(view);
  camera.SetProjection(projection);
  camera.SetScale(10);
  return camera;
}

// Checks where a point is drawn, and its depth unless that is NaN.
void ExpectAt(const TsProjected& p, double x, double y, double depth = NAN,
              double tolerance = 1e-9) {
  EXPECT_NEAR(p.x, x, tolerance);
  EXPECT_NEAR(p.y, y, tolerance);
  if (!std::isnan(depth)) {
    EXPECT_NEAR(p.depth, depth, tolerance);
  }
}

TEST(CameraTest, ViewsProjectAsTheyShouldFitShowsEveryPointAndMovesKeepWhatTheyShould) {
  const TsVec3 p{1, 2, 3};
  // Top: x to the right, y up, z toward the viewer.
  ExpectAt(CameraAt(TsStandardView::top).Project(p), 110, 30, 3);
  // Front: x to the right, z up; the viewer stands at -y.
  ExpectAt(CameraAt(TsStandardView::front).Project(p), 110, 20, -2);
  // Right: y to the right, z up; the viewer stands at +x.
  ExpectAt(CameraAt(TsStandardView::right).Project(p), 120, 20, 1);
  // Iso: the viewer looks from (1, -1, 1): that direction is the centre, x and y both go right.
  const TsCamera iso = CameraAt(TsStandardView::iso);
  ExpectAt(iso.Project({1, -1, 1}), 100, 50, std::sqrt(3.0));
  ExpectAt(iso.Project({1, 0, 0}), 100 + 10 / std::sqrt(2.0), 50 + 10 / std::sqrt(6.0));  // down
  ExpectAt(iso.Project({0, 1, 0}), 100 + 10 / std::sqrt(2.0), 50 - 10 / std::sqrt(6.0));  // up
  ExpectAt(iso.Project({0, 0, 1}), 100, 50 - 10 * std::sqrt(2.0 / 3.0));

  const TsCamera camera = CameraAt(TsStandardView::top, TsProjection::perspective);
  const double f = camera.FocalLength();
  EXPECT_NEAR(f, 100 / std::tan(20 * 3.14159265358979323846 / 180), 1e-9);
  const double eye = camera.EyeDistance();
  // On the target's plane the scale is the camera's; nearer points are drawn larger.
  ExpectAt(camera.Project({1, 0, 0}), 110, 50, 0);
  ExpectAt(camera.Project({1, 0, 2}), 100 + f / (eye - 2), 50, 2);
  ExpectAt(camera.Project({1, 0, -2}), 100 + f / (eye + 2), 50, -2);
  EXPECT_FALSE(camera.Project({0, 0, eye + 1}).visible) << "behind the eye";

  // Fit shows every point inside the margins.
  for (const TsProjection projection : {TsProjection::orthographic, TsProjection::perspective}) {
    for (const TsStandardView view :
         {TsStandardView::top, TsStandardView::front, TsStandardView::right, TsStandardView::iso}) {
      TsCamera fitted = CameraAt(view, projection);
      const std::vector<TsVec3> points = {{0, 0, 0}, {12, 8, 1}, {2, 2, 6}, {13, 4.4, 3.4}};
      ASSERT_TRUE(fitted.Fit(points, 20));
      double left = 1e9, right = -1e9, top = 1e9, bottom = -1e9;
      for (const TsVec3& p : points) {
        const TsProjected q = fitted.Project(p);
        left = std::min(left, q.x);
        right = std::max(right, q.x);
        top = std::min(top, q.y);
        bottom = std::max(bottom, q.y);
      }
      EXPECT_GE(left, 20 - 1e-6);
      EXPECT_LE(right, 180 + 1e-6);
      EXPECT_GE(top, 20 - 1e-6);
      EXPECT_LE(bottom, 80 + 1e-6);
      if (projection == TsProjection::orthographic) {
        // One side of the extent touches its margins.
        EXPECT_TRUE(std::fabs(left - 20) < 1e-6 || std::fabs(top - 20) < 1e-6);
      }
    }
  }
  TsCamera single = CameraAt(TsStandardView::top);
  EXPECT_FALSE(single.Fit({}, 20));
  EXPECT_TRUE(single.Fit({{4, 4, 4}}, 20));  // a single point goes to the centre
  ExpectAt(single.Project({4, 4, 4}), 100, 50, 0);

  // An orbit turns about the target; a pan and a zoom keep what is under the pointer.
  TsCamera orbiting = CameraAt(TsStandardView::iso);
  orbiting.SetTarget({5, 5, 5});
  const TsVec3 point{7, 3, 6};
  const TsProjected before = orbiting.Project(point);
  orbiting.Orbit(40, -25);
  ExpectAt(orbiting.Project({5, 5, 5}), 100, 50, 0);  // the target stays at the centre
  EXPECT_GT(std::hypot(orbiting.Project(point).x - before.x, orbiting.Project(point).y - before.y),
            1);
  orbiting.Orbit(0, 25);
  orbiting.Orbit(-40, 0);
  ExpectAt(orbiting.Project(point), before.x, before.y, before.depth, 1e-6);

  // A drag by (30, -20) moves every point by as much.
  orbiting.Pan(30, -20);
  ExpectAt(orbiting.Project(point), before.x + 30, before.y - 20);

  // Zooming at a pixel keeps the target plane's point under it.
  TsCamera zoomed = CameraAt(TsStandardView::top);
  const TsProjected under = zoomed.Project({3, -2, 0});
  zoomed.ZoomAt(2.5, under.x, under.y);
  ExpectAt(zoomed.Project({3, -2, 0}), under.x, under.y);
  EXPECT_NEAR(zoomed.Scale(), 25, 1e-12);
}
}  // namespace
