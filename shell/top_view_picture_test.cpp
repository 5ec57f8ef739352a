#include "shell/top_view_picture.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "testing/host_session_test.h"

namespace {

class TopViewPictureTest : public HostSessionTest {
 protected:
  void SetUp() override { doc_ = CTarsaStandIn::NewDocument(); }
  const CTarsaObject* Add(ZK_Geometry* geometry, const wchar_t* name,
                          TarsaObjectMode mode = TarsaObjectMode::normal) {
    CTarsaObjectAttributes attributes;
    attributes.m_name = name;
    attributes.m_mode = mode;
    auto* object = new CTarsaObject(geometry, attributes);
    EXPECT_TRUE(doc_->AddObject(object));
    return object;
  }
  // The SVG group drawn for an object.
  std::string Group(const CTarsaObject* object) {
    const std::string svg = TsTopViewSvg(*doc_);
    const std::string id = ZK_UuidToString(object->ModelObjectId()).ToUtf8();
    const size_t start = svg.find("<g id=\"" + id + "\"");
    return start == std::string::npos ? "" : svg.substr(start, svg.find("</g>", start) - start);
  }
  CTarsaDoc* doc_ = nullptr;
};

TEST_F(TopViewPictureTest, DrawsFromAboveWithYUpAndTheModelFittedIn) {
  // Two points 10 apart: the drawing's longer side, 640 pixels, between 40-pixel margins.
  const CTarsaObject* low = Add(new ZK_Point({0, 0, 7}), L"low");
  const CTarsaObject* high = Add(new ZK_Point({10, 10, -3}), L"high");
  EXPECT_NE(Group(low).find(R"(cx="40.0" cy="680.0")"), std::string::npos) << Group(low);
  EXPECT_NE(Group(high).find(R"(cx="680.0" cy="40.0")"), std::string::npos) << Group(high);
  EXPECT_NE(TsTopViewSvg(*doc_).find(R"(width="720.0" height="720.0")"), std::string::npos);
}

TEST_F(TopViewPictureTest, ShowsSelectionAndHiddenObjectsAndEscapesNames) {
  const CTarsaObject* picked = Add(new ZK_Box({0, 0, 0}, {1, 1, 1}), L"a<b> & \"c\"");
  const CTarsaObject* hidden =
      Add(new ZK_Box({2, 0, 0}, {3, 1, 1}), L"gone", TarsaObjectMode::hidden);
  picked->Select();
  EXPECT_NE(Group(picked).find(R"(class="selected")"), std::string::npos);
  EXPECT_NE(Group(picked).find(">a&lt;b&gt; &amp; &quot;c&quot;</text>"), std::string::npos);
  EXPECT_NE(Group(hidden).find(R"(class="hidden")"), std::string::npos);
  // A box is drawn by its twelve edges.
  const std::string edges = Group(hidden);
  EXPECT_EQ(std::count(edges.begin(), edges.end(), 'M'), 12);
}

TEST_F(TopViewPictureTest, AnEmptyOrFlatModelGivesAPictureAndABadPathAMessage) {
  EXPECT_NE(TsTopViewSvg(*doc_).find("</svg>"), std::string::npos);
  Add(new ZK_Point({3, 3, 3}), L"only");
  EXPECT_EQ(TsTopViewSvg(*doc_).find("nan"), std::string::npos);
  std::wstring error;
  EXPECT_FALSE(TsWriteTopViewSvg(*doc_, "/nonexistent/folder/top.svg", error));
  EXPECT_EQ(error, L"Could not write the picture /nonexistent/folder/top.svg.");
}

}  // namespace
