// How far members stand from their stances, measured without moving anything.

#include "drift/stance_drift.h"

#include <tuple>

#include "testing/stance_document_test.h"

namespace {

using StanceDriftTest = StanceDocumentTest;

ZK_Xform Turn(double degrees, const ZK_3dPoint& center) {
  return ZK_Xform::Rotation(degrees * 3.14159265358979323846 / 180.0, {0, 0, 1}, center);
}

std::tuple<int, int, double, double> Figures(const KorvoStanceSummary& s) {
  return std::make_tuple(s.m_members, s.m_moved, s.m_largest_distance, s.m_largest_angle);
}

// Each case saves a stance of its own of a member with construction history, which a restore
// passes over, and a cover and a base, then moves the cover: measured on its own or with every
// stance at once, the stance has what the cover's move makes of it.
TEST_F(StanceDriftTest, AMovedMemberReportsHowFarItsCentreTravelsAndHowFarItTurns) {
  struct Case {
    const char* what;
    ZK_Xform move;
    double distance, angle;
    bool scale_changed;
  };
  // The cover is the box from 0,0,0 to 2,2,2, with its centre at 1,1,1; figures are to a
  // millionth.
  const Case cases[] = {
      {"moved aside", ZK_Xform::Translation(0, 5, 0), 5, 0, false},
      {"turned about its centre", Turn(30, {1, 1, 1}), 0, 30, false},
      {"moved, then turned about its new centre",
       Turn(30, {1, 6, 1}) * ZK_Xform::Translation(0, 5, 0), 5, 30, false},
      {"turned a quarter about the origin", Turn(90, {0, 0, 0}), 2, 90, false},
      {"scaled twice about the origin", ZK_Xform::Scale(2, 2, 2), 1.732051, 0, true},
  };
  Table().Add(ZK_UUID{1, 2, 3, {4}}, L"Empty");
  const ZK_UUID built = AddBuilt();
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const ZK_UUID cover = Add(new ZK_Box({0, 0, 0}, {2, 2, 2}));
    const ZK_UUID closed = Save(L"Closed", {built, cover, AddBox()});
    Move(cover, c.move);
    KorvoStanceSummary summary;
    const std::vector<KorvoMemberDrift> members = MeasureStance(*doc_, closed, &summary);
    ASSERT_EQ(members.size(), 3u);
    EXPECT_EQ(std::make_tuple(members[0].m_state, members[1].m_object, members[1].m_state,
                              members[1].m_distance, members[1].m_angle, members[1].m_scale_changed,
                              members[2].m_state, summary.m_moved, summary.Matches()),
              std::make_tuple(KorvoMemberState::not_restorable, Object(cover),
                              KorvoMemberState::moved, c.distance, c.angle, c.scale_changed,
                              KorvoMemberState::at_stance, 1, false));
    const std::vector<KorvoStanceSummary> every = MeasureEveryStance(*doc_, Table());
    EXPECT_EQ(Figures(every.back()), Figures(summary));
    EXPECT_FALSE(every[0].Matches());  // a stance with no member matches nothing
    access_.RestoreStance(*doc_, closed);
    EXPECT_TRUE(MeasureEveryStance(*doc_, Table()).back().Matches());
  }
}

}  // namespace
