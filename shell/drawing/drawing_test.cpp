#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <tuple>

#include "shell/drawing/frame.h"
#include "shell/drawing/picking.h"
#include "shell/drawing/svg_writer.h"
#include "shell/drawing/test_scenes.h"

namespace {

TsCamera Fitted(const std::vector<TsSceneObject>& scene, TsStandardView view) {
  TsCamera camera;
  camera.SetViewport(640, 480);
  camera.SetStandardView(view);
  camera.Fit(TsScenePoints(scene), 40);
  return camera;
}

std::vector<const TsPrimitive*> PrimitivesOf(const TsFrame& frame, int object) {
  std::vector<const TsPrimitive*> drawn;
  const TsDrawnObject& o = frame.objects[object];
  for (std::uint32_t k = 0; k < o.primitive_count; ++k) {
    drawn.push_back(&frame.primitives[o.first_primitive + k]);
  }
  return drawn;
}

TEST(DrawingTest, ABoxShowsTheFacesTurnedToTheViewerLooksFollowTheStateAndOutlinesComeLast) {
  const std::vector<TsSceneObject> scene = {TestBox("cube", {0, 0, 0}, {1, 1, 1})};
  const TsFrame iso = TsDrawScene(scene, Fitted(scene, TsStandardView::iso), TsDrawOptions());
  const std::vector<const TsPrimitive*> faces = PrimitivesOf(iso, 0);
  ASSERT_EQ(faces.size(), 3u) << "top, front and right";
  std::set<std::tuple<int, int, int>> shades;
  for (const TsPrimitive* face : faces) {
    EXPECT_EQ(face->kind, TsPrimitiveKind::polygon);
    EXPECT_EQ(face->count, 4u);
    EXPECT_EQ(face->stroke, TsLookOf(TsShapeKind::box, TsObjectState::normal).edge);
    shades.insert({face->fill.r, face->fill.g, face->fill.b});
  }
  EXPECT_EQ(shades.size(), 3u) << "each face its own shade";
  const TsFrame top = TsDrawScene(scene, Fitted(scene, TsStandardView::top), TsDrawOptions());
  EXPECT_EQ(PrimitivesOf(top, 0).size(), 1u) << "only the top faces the viewer";

  std::vector<TsSceneObject> states = {
      TestBox("picked", {0, 0, 0}, {1, 1, 1}, TsObjectState::selected),
      TestBox("fixed", {2, 0, 0}, {3, 1, 1}, TsObjectState::locked),
      TestBox("preview", {0, 3, 0}, {1, 4, 1}, TsObjectState::outline),
      TestBox("front", {0, -3, 0}, {1, -2, 1})};
  states.push_back(TestShape(TsShapeKind::point, "", {{5, 5, 5}}));
  const TsFrame frame = TsDrawScene(states, Fitted(states, TsStandardView::iso), TsDrawOptions());
  EXPECT_EQ(frame.order.back(), 2) << "the outline is drawn over everything";
  EXPECT_EQ(PrimitivesOf(frame, 0)[0]->stroke,
            TsLookOf(TsShapeKind::box, TsObjectState::selected).edge);
  EXPECT_GT(PrimitivesOf(frame, 0)[0]->width, 2);
  EXPECT_EQ(PrimitivesOf(frame, 1)[0]->stroke,
            TsLookOf(TsShapeKind::box, TsObjectState::locked).edge);
  const std::vector<const TsPrimitive*> outline = PrimitivesOf(frame, 2);
  ASSERT_EQ(outline.size(), 1u);
  // All twelve edges, dashed, without fill.
  EXPECT_EQ(
      std::make_tuple(outline[0]->kind, outline[0]->count, outline[0]->dashed, outline[0]->fill.a),
      std::make_tuple(TsPrimitiveKind::segments, 24u, true, 0));
  EXPECT_EQ(PrimitivesOf(frame, 4)[0]->kind, TsPrimitiveKind::dot);
}

TEST(DrawingTest, WhatTheViewportDoesNotShowIsNotDrawnAndFromCloseUpOrFarOffWhatItCanIs) {
  const std::vector<TsSceneObject> scene = {TestBox("in", {0, 0, 0}, {1, 1, 1}),
                                            TestBox("out", {100, 0, 0}, {101, 1, 1})};
  TsCamera camera;
  camera.SetViewport(640, 480);
  camera.SetStandardView(TsStandardView::top);
  camera.Fit({{0, 0, 0}, {1, 1, 1}}, 40);
  const TsFrame frame = TsDrawScene(scene, camera, TsDrawOptions());
  EXPECT_TRUE(frame.objects[0].drawn);
  EXPECT_FALSE(frame.objects[1].drawn);
  EXPECT_EQ(frame.order, std::vector<int>{0});
  EXPECT_TRUE(TsDrawScene({}, camera, TsDrawOptions()).primitives.empty());

  // From close up or far off, what can be drawn is.
  const std::vector<TsSceneObject> demo = DemoScene(false);
  TsDrawOptions options;
  options.text_width = TsApproximateTextWidth;
  for (const TsProjection projection : {TsProjection::orthographic, TsProjection::perspective}) {
    for (const double zoom : {1e15, 1e6, 1e-15}) {
      TsCamera zoomed = Fitted(demo, TsStandardView::iso);
      zoomed.SetProjection(projection);
      zoomed.ZoomAt(zoom, 300, 200);
      EXPECT_GE(zoomed.Scale(), 1e-9);
      EXPECT_LE(zoomed.Scale(), 1e9);
      const TsFrame drawn = TsDrawScene(demo, zoomed, options);
      for (const TsPoint2& p : drawn.points) {
        EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
      }
      for (const TsLabel& label : drawn.labels) {
        EXPECT_TRUE(label.box.Intersects({0, 0, 640, 480}));
      }
    }
  }
}

// Which box is nearest at a pixel: depth_order_test. Here what else a click and a window take.
TEST(DrawingTest, AClickFindsTheNearestObjectInFrontAndAWindowWhatIsWhollyInside) {
  // Two boxes one above the other, and a preview's outline above them.
  std::vector<TsSceneObject> scene = {
      TestBox("low", {0, 0, 0}, {4, 4, 1}), TestBox("high", {1, 1, 2}, {3, 3, 3}),
      TestBox("preview", {1, 1, 5}, {3, 3, 6}, TsObjectState::outline)};
  scene.push_back(TestShape(TsShapeKind::polyline, "", {{6, 0, 0}, {6, 4, 0}}));
  for (const TsStandardView view : {TsStandardView::top, TsStandardView::iso}) {
    const TsCamera camera = Fitted(scene, view);
    const TsFrame frame = TsDrawScene(scene, camera, TsDrawOptions());
    const TsProjected middle = camera.Project({2, 2, 3});
    EXPECT_EQ(TsPickAt(frame, scene, {middle.x, middle.y}, 5), 1) << "the box, not its outline";
    const TsProjected near_line = camera.Project({6, 2, 0});
    EXPECT_EQ(TsPickAt(frame, scene, {near_line.x + 3, near_line.y}, 5), 3) << "within 5 pixels";
    EXPECT_EQ(TsPickAt(frame, scene, {near_line.x + 12, near_line.y}, 5), -1);
    // A window round the upper box takes it alone; one round everything takes all but the
    // preview's outline.
    const TsRect high = frame.objects[1].bounds.Inflated(2);
    EXPECT_EQ(TsPickInside(frame, scene, high), std::vector<int>{1});
    EXPECT_EQ(TsPickInside(frame, scene, {0, 0, 640, 480}), (std::vector<int>{0, 1, 3}));
  }
}

TEST(DrawingTest, TheSvgGroupsEachObjectByItsIdAndEscapesTheLabels) {
  std::vector<TsSceneObject> scene = {
      TestBox("a<b> & \"c\"", {0, 0, 0}, {1, 1, 1}, TsObjectState::selected),
      TestBox("plain", {3, 0, 0}, {4, 1, 1})};
  scene[1].id = "ID-2";
  TsDrawOptions options;
  options.text_width = TsApproximateTextWidth;
  const TsFrame frame = TsDrawScene(scene, Fitted(scene, TsStandardView::iso), options);
  const std::string svg = TsFrameSvg(frame, scene, "Iso view");
  EXPECT_EQ(
      svg.rfind("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"640.0\" height=\"480.0\"", 0),
      0u);
  EXPECT_NE(svg.find("<title>Iso view</title>"), std::string::npos);
  EXPECT_NE(svg.find("<g id=\"ID-2\" class=\"box\">"), std::string::npos);
  EXPECT_NE(svg.find("class=\"box selected\""), std::string::npos);
  EXPECT_NE(svg.find(">a&lt;b&gt; &amp; &quot;c&quot;</text>"), std::string::npos);
  EXPECT_NE(svg.find(">plain</text>"), std::string::npos);
  EXPECT_EQ(svg.find("nan"), std::string::npos);
  EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
}

}  // namespace
