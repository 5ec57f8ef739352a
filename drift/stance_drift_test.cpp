// How far members stand from their stances, measured without moving anything.

#include "drift/stance_drift.h"

#include <tuple>

#include "testing/stance_document_test.h"

namespace {

using StanceDriftTest = StanceDocumentTest;

const double kDegree = 3.14159265358979323846 / 180.0;

ZK_Xform Turn(double degrees, const ZK_3dPoint& center) {
  return ZK_Xform::Rotation(degrees * kDegree, {0, 0, 1}, center);
}

TEST_F(StanceDriftTest, AMovedMemberReportsHowFarItsCentreTravelsAndHowFarItTurns) {
  struct Case {
    const char* what;
    ZK_Xform move;
    double distance, angle;
    bool scale_changed;
  };
  // The cover is the box from 0,0,0 to 2,2,2, with its centre at 1,1,1.
  const Case cases[] = {
      {"moved aside", ZK_Xform::Translation(0, 5, 0), 5, 0, false},
      {"turned about its centre", Turn(30, {1, 1, 1}), 0, 30, false},
      {"moved, then turned about its new centre",
       Turn(30, {1, 6, 1}) * ZK_Xform::Translation(0, 5, 0), 5, 30, false},
      {"turned a quarter about the origin", Turn(90, {0, 0, 0}), 2, 90, false},
      {"scaled twice about the origin", ZK_Xform::Scale(2, 2, 2), 1.7320508, 0, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const ZK_UUID cover = Add(new ZK_Box({0, 0, 0}, {2, 2, 2}));
    const ZK_UUID base = AddBox();
    const ZK_UUID closed = Save(L"Closed", {cover, base});
    Move(cover, c.move);
    KorvoStanceSummary summary;
    const std::vector<KorvoMemberDrift> members = MeasureStance(*doc_, closed, &summary);
    ASSERT_EQ(members.size(), 2u);
    EXPECT_EQ(std::make_tuple(members[0].m_object, members[0].m_state, members[0].m_scale_changed,
                              members[1].m_state, summary.m_moved, summary.Matches()),
              std::make_tuple(Object(cover), KorvoMemberState::moved, c.scale_changed,
                              KorvoMemberState::at_stance, 1, false));
    EXPECT_NEAR(members[0].m_distance, c.distance, 1e-6);
    EXPECT_NEAR(members[0].m_angle, c.angle, 1e-6);
    access_.RestoreStance(*doc_, closed);
    EXPECT_TRUE(MeasureEveryStance(*doc_, Table())[0].Matches());
  }
}

TEST_F(StanceDriftTest, EveryStanceAtOnceAgreesWithEachStanceOnItsOwn) {
  const ZK_UUID a = AddBox();
  const ZK_UUID b = Add(new ZK_Point({1, 1, 1}));
  const ZK_UUID light = AddLight();
  const ZK_UUID rebuilt = AddBuilt();
  const ZK_UUID first = Save(L"First", {a, b, light, rebuilt});
  Move(a, ZK_Xform::Translation(1, 0, 0));
  const ZK_UUID second = Save(L"Second", {a, light});
  Move(light, Turn(45, {0, 0, 0}));
  const ZK_UUID third = Save(L"Third", {b, rebuilt});
  Table().Add(ZK_UUID{1, 2, 3, {4}}, L"Empty");

  const std::vector<KorvoStanceSummary> every = MeasureEveryStance(*doc_, Table());
  ASSERT_EQ(every.size(), 4u);
  const auto figures = [](const KorvoStanceSummary& s) {
    return std::make_tuple(s.m_members, s.m_moved, s.m_largest_distance, s.m_largest_angle);
  };
  const ZK_UUID ids[] = {first, second, third};
  for (int i = 0; i < 3; ++i) {
    KorvoStanceSummary one;
    MeasureStance(*doc_, ids[i], &one);
    EXPECT_EQ(figures(every[i]), figures(one)) << i;
  }
  EXPECT_EQ(every[0].m_moved, 2);  // the history member is no move a restore would make
  EXPECT_EQ(every[1].m_moved, 1);
  EXPECT_NEAR(every[1].m_largest_angle, 45, 1e-9);
  EXPECT_TRUE(every[2].Matches());
  EXPECT_FALSE(every[3].Matches());  // a stance with no member matches nothing
  EXPECT_EQ(MeasureStance(*doc_, first)[3].m_state, KorvoMemberState::not_restorable);
}

}  // namespace
