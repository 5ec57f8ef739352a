#include "shell/object_listing.h"

#include <gtest/gtest.h>

#include <utility>

#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "testing/host_session_test.h"

namespace {

TEST(FormatNumber, ShowsAtMostThreeDecimalsAndNeverMinusZero) {
  const std::pair<double, const wchar_t*> cases[] = {
      {2, L"2"},       {2.5, L"2.5"},   {0.70710678, L"0.707"}, {-1e-12, L"0"},
      {-0.0004, L"0"}, {-12.0, L"-12"}, {1e6, L"1000000"}};
  for (const auto& [number, shown] : cases) EXPECT_EQ(TsFormatNumber(number), shown) << number;
}

using ObjectListingTest = HostDocumentTest;

// Lights and the other kinds and states are listed in the transcripts; here what they do not
// show: the box round a polyline whose extremes lie between its ends, and an unnamed object.
TEST_F(ObjectListingTest, ListsEveryObjectInAlignedColumnsWithItsStateAndPlace) {
  const CTarsaObject* box = Add(new ZK_Box({0, 0, 0}, {1, 2, 3}), L"door");
  Add(new ZK_Polyline({{0, 0, 0}, {-4, 1, 0}, {2, 5, 0}}), L"", TarsaObjectMode::hidden);
  box->Select();
  EXPECT_EQ(TsListObjects(TsEveryObject(*doc_)),
            L"door       box       normal selected  from 0,0,0 to 1,2,3   "
            L"00000000-0000-4000-8000-000000000001\n"
            L"(unnamed)  polyline  hidden           from -4,0,0 to 2,5,0  "
            L"00000000-0000-4000-8000-000000000002\n");
}

}  // namespace
