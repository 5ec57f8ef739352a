#include "shell/model_scene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "testing/host_session_test.h"

namespace {

class ModelSceneTest : public HostDocumentTest {
 protected:
  // The SVG group drawn for an object, seen from the iso side.
  std::string Group(const CTarsaObject* object) {
    const std::string svg = TsPictureSvg(*doc_, TsStandardView::iso);
    const std::string id = ZK_UuidToString(object->ModelObjectId()).ToUtf8();
    const size_t start = svg.find("<g id=\"" + id + "\"");
    return start == std::string::npos ? "" : svg.substr(start, svg.find("</g>", start) - start);
  }
};

TEST_F(ModelSceneTest, TheSceneHoldsWhatIsNotHiddenEachInTheLookOfItsState) {
  const CTarsaObject* box = Add(new ZK_Box({0, 0, 0}, {1, 2, 3}), L"box");
  const CTarsaObject* picked = Add(new ZK_Point({5, 5, 5}), L"picked");
  const CTarsaObject* locked =
      Add(new ZK_Polyline({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}), L"fixed", TarsaObjectMode::locked);
  Add(new ZK_Box({2, 0, 0}, {3, 1, 1}), L"gone", TarsaObjectMode::hidden);
  auto* light = new ZK_Light();
  light->m_location = {1, 2, 3};
  light->m_direction = {0, 0, -2};
  const CTarsaObject* lamp = Add(light, L"lamp");
  box->Select();
  const TsModelScene scene = TsSceneOf(*doc_, {picked->ModelObjectId()});
  ASSERT_EQ(scene.objects.size(), 4u) << "the hidden box is left out";
  EXPECT_EQ(scene.sources, (std::vector<const CTarsaObject*>{box, picked, locked, lamp}));
  std::vector<std::tuple<TsShapeKind, TsObjectState, std::string>> looks;
  for (const TsSceneObject& object : scene.objects) {
    looks.emplace_back(object.kind, object.state, object.label);
  }
  EXPECT_EQ(looks, (decltype(looks){{TsShapeKind::box, TsObjectState::selected, "box"},
                                    {TsShapeKind::point, TsObjectState::selected, "picked"},
                                    {TsShapeKind::polyline, TsObjectState::locked, "fixed"},
                                    {TsShapeKind::light, TsObjectState::normal, "lamp"}}))
      << "the point is picked by the prompt";
  EXPECT_EQ(scene.objects[0].points.size(), 8u);
  EXPECT_EQ(scene.objects[0].points[6], (TsVec3{1, 2, 3}));
  EXPECT_EQ(scene.objects[0].id, ZK_UuidToString(box->ModelObjectId()).ToUtf8());
  EXPECT_EQ(scene.objects[3].direction, (TsVec3{0, 0, -2}));
}

// How a scene is drawn, labelled and ordered is the drawing's; here the picture's view and size.
TEST_F(ModelSceneTest, APictureOfAnyModelDrawsItFromTheSideAskedAtItsSizeOrSaysWhyNot) {
  EXPECT_NE(TsPictureSvg(*doc_, TsStandardView::iso).find("</svg>"), std::string::npos);
  Add(new ZK_Point({3, 3, 3}), L"only");
  EXPECT_EQ(TsPictureSvg(*doc_, TsStandardView::front).find("nan"), std::string::npos);
  std::wstring error;
  EXPECT_FALSE(TsWritePictureSvg(*doc_, TsStandardView::top, "/nonexistent/folder/top.svg", error));
  EXPECT_EQ(error, L"Could not write the picture /nonexistent/folder/top.svg.");
  TsStandardView view;
  EXPECT_TRUE(TsViewNamed(L"fRoNt", view));
  EXPECT_EQ(view, TsStandardView::front);
  EXPECT_FALSE(TsViewNamed(L"Back", view));

  const CTarsaObject* low = Add(new ZK_Box({0, 0, 0}, {10, 10, 1}), L"low");
  Add(new ZK_Box({4, 4, 1}, {6, 6, 3}), L"high");
  const std::string low_iso = Group(low);
  EXPECT_EQ(std::count(low_iso.begin(), low_iso.end(), 'Z'), 3) << "three faces from the side";
  // From above, the model's square outline is 640 pixels a side, with 70 to spare round it.
  const std::string top = TsPictureSvg(*doc_, TsStandardView::top);
  EXPECT_NE(top.find("<title>Top view</title>"), std::string::npos);
  EXPECT_NE(top.find(R"(width="780.0" height="780.0")"), std::string::npos) << top.substr(0, 200);
}
}  // namespace
