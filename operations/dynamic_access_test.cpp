#include "operations/dynamic_access.h"

#include "testing/stance_document_test.h"
#include "testing/stand_ins.h"

namespace {

const ZK_Xform kShift = ZK_Xform::Translation(7, -3, 2);
const ZK_Xform kTurn = ZK_Xform::Rotation(0.9, {1, 1, 0}, {2, -1, 5});
const ZK_Xform kStretch = ZK_Xform::Scale(2, 0.5, 3);

using StanceCycleTest = StanceDocumentTest;

// A second restore finds everything in place: it replaces nothing and records no undo step, but
// the views are regenerated. The host's own update and append regenerate them once each: update
// takes the present placement, append adds objects where they are. A member appended again keeps
// its entry (the one a model file would write), and a null object is skipped. Only known stances
// are read or changed, and a stance renamed to its own name is not changed.
TEST_F(StanceCycleTest, RestoreUpdateAndAppendBringEveryKindOfObjectWhereAKnownStanceSays) {
  const std::vector<ZK_UUID> scene = {
      AddBox(),   Add(new ZK_Point({9, 9, 9})),    Add(new ZK_Polyline({{0, 0, 0}, {1, 2, 3}})),
      AddLight(), AddBox(TarsaObjectMode::hidden), AddBox(TarsaObjectMode::locked)};
  const std::vector<ZK_3dPoint> saved = Placements(scene);
  const ZK_UUID front = Save(L"Front", scene);
  for (const ZK_Xform& xform : {kShift, kTurn, kStretch}) {
    for (const ZK_UUID& id : scene) Move(id, xform);
  }

  EXPECT_TRUE(access_.RestoreStance(*doc_, front));
  ExpectNear(Placements(scene), saved);
  EXPECT_EQ(Object(scene[4])->ObjectState(), CTarsaObject::hidden_object);
  EXPECT_EQ(Object(scene[5])->ObjectState(), CTarsaObject::locked_object);
  const int steps = CTarsaStandIn::UndoStepCount(*doc_);
  const int regens = CTarsaStandIn::RegenCount(*doc_);
  Step([&] {
    EXPECT_TRUE(access_.RestoreStance(*doc_, front));
    EXPECT_FALSE(access_.RenameStance(*doc_, front, L"FRONT"));
  });
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps);

  const ZK_UUID box = scene[0];
  const ZK_UUID point = Add(new ZK_Point({1, 1, 1}));
  Move(box, kShift);
  EXPECT_TRUE(access_.UpdateStance(*doc_, front));
  const std::vector<ZK_3dPoint> placed = Placements({box, point});
  Move(box, kTurn);
  ZK_SimpleArray<const CTarsaObject*> objects = Objects({point, box});
  objects.Append(nullptr);
  EXPECT_TRUE(access_.AppendStance(*doc_, front, objects));
  EXPECT_EQ(CTarsaStandIn::RegenCount(*doc_), regens + 3);
  EXPECT_EQ(RecordOf(box)->m_entries.GetSize(), 1);
  Move(point, kTurn);
  access_.RestoreStance(*doc_, front);
  ExpectNear(Placements({box, point}), placed);
  std::vector<ZK_UUID> members = scene;
  members.push_back(point);
  EXPECT_EQ(Members(L"Front"), members);

  const ZK_UUID unknown = ZK_UuidFromString("11111111-2222-4333-8444-555555555555");
  ZK_wString name(L"kept");
  for (const ZK_UUID& id : {unknown, ZK_nil_uuid}) {
    EXPECT_FALSE(access_.GetStanceObjects(*doc_, id, objects) ||
                 access_.GetStanceName(*doc_, id, name) || access_.RestoreStance(*doc_, id) ||
                 access_.RenameStance(*doc_, id, L"Other") || access_.UpdateStance(*doc_, id) ||
                 access_.AppendStance(*doc_, id, Objects({box})) ||
                 access_.DeleteStance(*doc_, id));
  }
  EXPECT_EQ(objects.Count(), 3);
  EXPECT_EQ(name, L"kept");
  const ZK_UUID side = Save(L"Side", {});
  ZK_SimpleArray<ZK_UUID> ids;
  ids.Append(ZK_nil_uuid);  // the ids go after what the array holds
  access_.GetStanceIds(*doc_, ids);
  EXPECT_EQ(std::vector<ZK_UUID>(ids.Array(), ids.Array() + ids.Count()),
            (std::vector<ZK_UUID>{ZK_nil_uuid, front, side}));
  EXPECT_TRUE(access_.GetStanceName(*doc_, side, name));
  EXPECT_EQ(name, L"Side");
}

}  // namespace
