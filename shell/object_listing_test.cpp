#include "shell/object_listing.h"

#include <gtest/gtest.h>

#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "testing/host_session_test.h"

namespace {

TEST(FormatNumber, ShowsAtMostThreeDecimalsAndNeverMinusZero) {
  EXPECT_EQ(TsFormatNumber(2), L"2");
  EXPECT_EQ(TsFormatNumber(2.5), L"2.5");
  EXPECT_EQ(TsFormatNumber(0.70710678), L"0.707");
  EXPECT_EQ(TsFormatNumber(-1e-12), L"0");
  EXPECT_EQ(TsFormatNumber(-0.0004), L"0");
  EXPECT_EQ(TsFormatNumber(-12.0), L"-12");
  EXPECT_EQ(TsFormatNumber(1e6), L"1000000");
}

using ObjectListingTest = HostDocumentTest;

TEST_F(ObjectListingTest, ListsEveryObjectInAlignedColumnsWithItsStateAndPlace) {
  const CTarsaObject* box = Add(new ZK_Box({0, 0, 0}, {1, 2, 3}), L"door");
  Add(new ZK_Polyline({{0, 0, 0}, {-4, 1, 0}, {2, 5, 0}}), L"", TarsaObjectMode::hidden);
  box->Select();
  ZK_Light light;
  light.m_location = {1, 1, 9};
  CTarsaObjectAttributes lamp;
  lamp.m_name = L"lamp";
  lamp.m_mode = TarsaObjectMode::locked;
  doc_->LightTable().AddLight(light, lamp);
  const std::vector<const CTarsaObject*> objects = TsEveryObject(*doc_);
  ASSERT_EQ(objects.size(), 3u);
  const std::wstring listing = TsListObjects(objects);
  const std::wstring id3 = ZK_UuidToString(objects[2]->ModelObjectId()).Text();
  EXPECT_EQ(listing,
            L"door       box       normal selected  from 0,0,0 to 1,2,3     "
            L"00000000-0000-4000-8000-000000000001\n"
            L"(unnamed)  polyline  hidden           from -4,0,0 to 2,5,0    "
            L"00000000-0000-4000-8000-000000000002\n"
            L"lamp       light     locked           at 1,1,9 toward 0,0,-1  " +
                id3 + L"\n");
}

}  // namespace
