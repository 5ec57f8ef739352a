#include "shell/drawing/depth_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "shell/drawing/picking.h"
#include "shell/drawing/test_scenes.h"

namespace {

TsCamera Camera(TsStandardView view, TsProjection projection = TsProjection::orthographic) {
  TsCamera camera;
  camera.SetViewport(800, 600);
  camera.SetStandardView(view);
  camera.SetProjection(projection);
  return camera;
}

// The scene drawn with the camera fitted to it; the order of the named objects.
std::vector<std::string> Order(const std::vector<TsSceneObject>& scene, TsCamera camera) {
  camera.Fit(TsScenePoints(scene), 40);
  const TsFrame frame = TsDrawScene(scene, camera, TsDrawOptions());
  std::vector<std::string> names;
  for (int i : frame.order) names.push_back(scene[i].label);
  return names;
}

bool Before(const std::vector<std::string>& order, const std::string& a, const std::string& b) {
  const auto ia = std::find(order.begin(), order.end(), a);
  const auto ib = std::find(order.begin(), order.end(), b);
  return ia != order.end() && ib != order.end() && ia < ib;
}

TEST(DepthOrderTest, WhatIsBehindOrInsideComesFirstWhateverTheCentresAndALineThroughABoxAfterIt) {
  // From the iso view the box at the plate's far corner is behind the plate's top face, though
  // its centre is nearer than the plate's: sorting by centres would paint the plate over it.
  for (const bool first : {true, false}) {
    std::vector<TsSceneObject> scene = {TestBox("plate", {0, 0, 0}, {10, 10, 1}),
                                        TestBox("far", {-1, 10.5, 0}, {0, 11, 2})};
    if (!first) std::swap(scene[0], scene[1]);
    const std::vector<std::string> order = Order(scene, Camera(TsStandardView::iso));
    EXPECT_TRUE(Before(order, "far", "plate"));
  }
  // Seen from the top, a box on the plate is in front of it.
  const std::vector<TsSceneObject> stacked = {TestBox("on", {4, 4, 1}, {5, 5, 2}),
                                              TestBox("plate", {0, 0, 0}, {10, 10, 1})};
  EXPECT_TRUE(Before(Order(stacked, Camera(TsStandardView::top)), "plate", "on"));
  // From the front, the box nearer the viewer (lower y) comes last.
  const std::vector<TsSceneObject> row = {TestBox("near", {0, 0, 0}, {2, 2, 2}),
                                          TestBox("back", {1, 3, 1}, {3, 5, 3})};
  EXPECT_TRUE(Before(Order(row, Camera(TsStandardView::front)), "back", "near"));
  EXPECT_TRUE(
      Before(Order(row, Camera(TsStandardView::front, TsProjection::perspective)), "back", "near"));

  std::vector<TsSceneObject> scene = {TestBox("housing", {2, 2, 1}, {10, 6, 5}),
                                      TestBox("impeller", {5, 3, 2}, {7, 5, 4})};
  scene.push_back(TestShape(TsShapeKind::polyline, "shaft", {{0, 4, 3}, {12, 4, 3}}));
  for (const TsStandardView view :
       {TsStandardView::top, TsStandardView::front, TsStandardView::right, TsStandardView::iso}) {
    const std::vector<std::string> order = Order(scene, Camera(view));
    EXPECT_TRUE(Before(order, "impeller", "housing"));
    EXPECT_TRUE(Before(order, "housing", "shaft"));
  }
}

// The box a ray from the pixel meets first, by intersecting it with every box: what the drawing
// must show at that pixel.
int Nearest(const std::vector<TsSceneObject>& scene, const TsCamera& camera, const TsPoint2& at) {
  const TsQuat back = camera.Orientation().Inverse();
  // The pixel's point on the target's plane, and the ray's direction toward the viewer.
  TsVec3 origin, toward;
  if (camera.Projection() == TsProjection::orthographic) {
    origin = camera.Target() + back.Rotate({(at.x - camera.Width() / 2) / camera.Scale(),
                                            -(at.y - camera.Height() / 2) / camera.Scale(), 0});
    toward = back.Rotate({0, 0, 1});
  } else {
    const TsVec3 eye = camera.Target() + back.Rotate({0, 0, camera.EyeDistance()});
    const double f = camera.FocalLength();
    const TsVec3 through =
        camera.Target() +
        back.Rotate({(at.x - camera.Width() / 2) / f * camera.EyeDistance(),
                     -(at.y - camera.Height() / 2) / f * camera.EyeDistance(), 0});
    origin = eye;
    toward = Normalized(eye - through);
  }
  int nearest = -1;
  double best = -1e300;
  for (size_t i = 0; i < scene.size(); ++i) {
    const TsVec3 low = scene[i].points[0], high = scene[i].points[6];
    // The slab method, along the ray from far (-) to near (+).
    double enter = -1e300, leave = 1e300;
    const double o[3] = {origin.x, origin.y, origin.z}, d[3] = {toward.x, toward.y, toward.z};
    const double lo[3] = {low.x, low.y, low.z}, hi[3] = {high.x, high.y, high.z};
    for (int k = 0; k < 3; ++k) {
      if (std::fabs(d[k]) < 1e-15) {
        if (o[k] < lo[k] || o[k] > hi[k]) enter = 1e300;
        continue;
      }
      double t0 = (lo[k] - o[k]) / d[k], t1 = (hi[k] - o[k]) / d[k];
      if (t0 > t1) std::swap(t0, t1);
      enter = std::max(enter, t0);
      leave = std::min(leave, t1);
    }
    if (enter > leave) continue;
    // The nearest point of the box along the ray is where it leaves toward the viewer.
    if (leave > best) {
      best = leave;
      nearest = static_cast<int>(i);
    }
  }
  return nearest;
}

TEST(DepthOrderTest, EveryPixelShowsTheBoxNearestTheViewerAmongThousandsOfBoxes) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> size(0.2, 0.95);
  std::uniform_real_distribution<double> height(0.2, 4);
  // A grid of boxes of random sizes, each in its own cell: none meets another.
  std::vector<TsSceneObject> scene;
  for (int x = 0; x < 40; ++x) {
    for (int y = 0; y < 40; ++y) {
      const double w = size(random), d = size(random), h = height(random);
      const double z = (x * 7 + y * 3) % 5 * 0.8;
      scene.push_back(TestBox("", {x + 0.0, y + 0.0, z}, {x + w, y + d, z + h}));
    }
  }
  std::uniform_real_distribution<double> pixel_x(0, 800), pixel_y(0, 600);
  for (const TsProjection projection : {TsProjection::orthographic, TsProjection::perspective}) {
    for (const TsStandardView view :
         {TsStandardView::top, TsStandardView::front, TsStandardView::right, TsStandardView::iso}) {
      TsCamera camera = Camera(view, projection);
      camera.Orbit(view == TsStandardView::iso ? 37 : 0, view == TsStandardView::iso ? 11 : 0);
      camera.Fit(TsScenePoints(scene), 40);
      const TsFrame frame = TsDrawScene(scene, camera, TsDrawOptions());
      int wrong = 0, hits = 0;
      for (int sample = 0; sample < 3000; ++sample) {
        const TsPoint2 at{pixel_x(random), pixel_y(random)};
        const int expected = Nearest(scene, camera, at);
        hits += expected >= 0;
        if (TsPickAt(frame, scene, at, 0) != expected) ++wrong;
      }
      EXPECT_GT(hits, 300);
      // A sample a hair from an edge may land either side of it: allow a handful.
      EXPECT_LE(wrong, 3) << "view " << static_cast<int>(view) << " projection "
                          << static_cast<int>(projection);
    }
  }
}

}  // namespace
