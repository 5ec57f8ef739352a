#include "shell/drawing/labels.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "shell/drawing/test_scenes.h"

namespace {

TsDrawOptions Options() {
  TsDrawOptions options;
  options.text_width = TsApproximateTextWidth;
  return options;
}

void ExpectApart(const std::vector<TsLabel>& labels, double width, double height) {
  for (size_t i = 0; i < labels.size(); ++i) {
    const TsRect& a = labels[i].box;
    EXPECT_GE(a.left, 0);
    EXPECT_GE(a.top, 0);
    EXPECT_LE(a.right, width);
    EXPECT_LE(a.bottom, height);
    for (size_t j = i + 1; j < labels.size(); ++j) {
      EXPECT_FALSE(a.Intersects(labels[j].box)) << labels[i].text << " overlaps " << labels[j].text;
    }
  }
}

TEST(LabelsTest, NoTwoLabelsOverlapTheFirstKeepsItsPlaceTheNextMovesOrIsDroppedNeverStacked) {
  for (const bool exploded : {false, true}) {
    for (const TsProjection projection : {TsProjection::orthographic, TsProjection::perspective}) {
      for (const TsStandardView view : {TsStandardView::top, TsStandardView::front,
                                        TsStandardView::right, TsStandardView::iso}) {
        const std::vector<TsSceneObject> scene = DemoScene(exploded);
        TsCamera camera;
        camera.SetViewport(700, 420);
        camera.SetStandardView(view);
        camera.SetProjection(projection);
        camera.Fit(TsScenePoints(scene), 40);
        const TsFrame frame = TsDrawScene(scene, camera, Options());
        ExpectApart(frame.labels, 700, 420);
        // Pulled apart, the pump has room for most of its names.
        if (exploded) {
          EXPECT_GE(frame.labels.size(), 9u) << static_cast<int>(view);
        }
      }
    }
  }

  // Two small objects side by side, each asking for the place above it: the selected one keeps
  // it, the other is moved away with a leader back to its object, or dropped.
  std::vector<TsLabelRequest> requests(2);
  for (int i = 0; i < 2; ++i) {
    requests[i].object = i;
    requests[i].text = i == 0 ? "second" : "first";
    requests[i].width = 60;
    requests[i].height = 12;
    requests[i].around = {100.0 + i * 4, 100, 104.0 + i * 4, 104};
    requests[i].anchor = {102.0 + i * 4, 102};
  }
  requests[1].priority = -1;
  const std::vector<TsLabel> labels = TsPlaceLabels(requests, 400, 300);
  ASSERT_EQ(labels.size(), 2u);
  // The first just above its anchor and to its right.
  EXPECT_EQ(
      std::make_tuple(labels[0].text, labels[0].leader, labels[0].box.bottom, labels[0].box.left),
      std::make_tuple(std::string("first"), false, 102.0 - 3, 106.0 + 3));
  EXPECT_EQ(labels[1].text, "second");
  EXPECT_FALSE(labels[0].box.Intersects(labels[1].box));
  if (labels[1].leader) {
    EXPECT_EQ(labels[1].leader_to, (TsPoint2{102, 102}));
  }

  // A hundred objects in a viewport with room for a few labels.
  std::vector<TsLabelRequest> crowd;
  for (int i = 0; i < 100; ++i) {
    TsLabelRequest request;
    request.object = i;
    request.text = "part-" + std::to_string(i);
    request.width = 50;
    request.height = 12;
    request.around = {20.0 + i % 10, 20.0 + i / 10, 21.0 + i % 10, 21.0 + i / 10};
    request.anchor = {request.around.left, request.around.top};
    crowd.push_back(request);
  }
  const std::vector<TsLabel> placed = TsPlaceLabels(crowd, 120, 90);
  EXPECT_GT(placed.size(), 2u);
  EXPECT_LT(placed.size(), 20u);
  ExpectApart(placed, 120, 90);
}
}  // namespace
