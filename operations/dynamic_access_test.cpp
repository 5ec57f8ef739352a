#include "operations/dynamic_access.h"

#include "testing/stance_document_test.h"
#include "testing/stand_ins.h"

namespace {

const ZK_Xform kShift = ZK_Xform::Translation(7, -3, 2);
const ZK_Xform kTurn = ZK_Xform::Rotation(0.9, {1, 1, 0}, {2, -1, 5});
const ZK_Xform kStretch = ZK_Xform::Scale(2, 0.5, 3);

class StanceCycleTest : public StanceDocumentTest {
 protected:
  // What GetStanceIds appends to an array that holds a nil id.
  std::vector<ZK_UUID> StanceIds() {
    ZK_SimpleArray<ZK_UUID> ids;
    ids.Append(ZK_nil_uuid);
    access_.GetStanceIds(*doc_, ids);
    return std::vector<ZK_UUID>(ids.Array(), ids.Array() + ids.Count());
  }
};

// A second restore finds everything in place: it replaces nothing and records no undo step, but
// the views are regenerated.
TEST_F(StanceCycleTest, RestoreBringsEveryKindOfObjectBackAfterSeveralMoves) {
  const std::vector<ZK_UUID> scene = {
      AddBox(),   Add(new ZK_Point({9, 9, 9})),    Add(new ZK_Polyline({{0, 0, 0}, {1, 2, 3}})),
      AddLight(), AddBox(TarsaObjectMode::hidden), AddBox(TarsaObjectMode::locked)};
  std::vector<std::vector<ZK_3dPoint>> saved;
  for (const ZK_UUID& id : scene) saved.push_back(Placement(id));
  const ZK_UUID front = Save(L"Front", scene);
  ASSERT_FALSE(ZK_UuidIsNil(front));
  for (const ZK_Xform& xform : {kShift, kTurn, kStretch}) {
    for (const ZK_UUID& id : scene) Move(id, xform);
  }

  EXPECT_TRUE(access_.RestoreStance(*doc_, front));
  for (size_t i = 0; i < scene.size(); ++i) ExpectNear(Placement(scene[i]), saved[i]);
  EXPECT_EQ(Object(scene[4])->ObjectState(), CTarsaObject::hidden_object);
  EXPECT_EQ(Object(scene[5])->ObjectState(), CTarsaObject::locked_object);

  const int steps = CTarsaStandIn::UndoStepCount(*doc_);
  const int regens = CTarsaStandIn::RegenCount(*doc_);
  Step([&] { EXPECT_TRUE(access_.RestoreStance(*doc_, front)); });
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps);
  EXPECT_EQ(CTarsaStandIn::RegenCount(*doc_), regens + 1);
}

TEST_F(StanceCycleTest, AnObjectWithConstructionHistoryIsNeverMoved) {
  auto* object = new CTarsaObject(new ZK_Box({0, 0, 0}, {1, 1, 1}));
  object->SetHistoryRecord(new CTarsaHistoryRecord(L"Loft"));
  doc_->AddObject(object);
  const ZK_UUID built = object->ModelObjectId();
  const ZK_UUID front = Save(L"Front", {built});
  Move(built, kShift);  // moving breaks the history of the moved copy, so give it back
  auto* rebuilt = Object(built)->Duplicate();
  rebuilt->SetHistoryRecord(new CTarsaHistoryRecord(L"Loft"));
  doc_->ReplaceObject(CTarsaObjRef(Object(built)), rebuilt);
  const auto moved = Placement(built);
  EXPECT_TRUE(access_.RestoreStance(*doc_, front));
  EXPECT_EQ(Object(built), rebuilt);
  ExpectNear(Placement(built), moved);
}

TEST_F(StanceCycleTest, UpdateTakesThePresentPlacementAndAppendAddsObjectsWhereTheyAre) {
  const ZK_UUID box = AddBox();
  const ZK_UUID point = Add(new ZK_Point({1, 1, 1}));
  const ZK_UUID front = Save(L"Front", {box});
  Move(box, kShift);
  EXPECT_TRUE(access_.UpdateStance(*doc_, front));
  const auto updated = Placement(box);
  EXPECT_TRUE(access_.AppendStance(*doc_, front, Objects({point, box})));
  const auto appended = Placement(point);
  Move(box, kTurn);
  Move(point, kTurn);
  access_.RestoreStance(*doc_, front);
  ExpectNear(Placement(box), updated);
  ExpectNear(Placement(point), appended);

  ZK_SimpleArray<const CTarsaObject*> members;
  EXPECT_TRUE(access_.GetStanceObjects(*doc_, front, members));
  EXPECT_EQ(members.Count(), 2);
}

TEST_F(StanceCycleTest, SavingUnderATakenNameReplacesThatStanceAtTheEnd) {
  const ZK_UUID box = AddBox();
  const ZK_UUID front = Save(L"Front", {box});
  const ZK_UUID side = Save(L"Side", {});
  const ZK_UUID again = Save(L"FRONT", {box});
  EXPECT_EQ(StanceIds(), (std::vector<ZK_UUID>{ZK_nil_uuid, side, again}));
  ZK_wString name;
  EXPECT_TRUE(access_.GetStanceName(*doc_, again, name));
  EXPECT_EQ(name, L"FRONT");
  EXPECT_TRUE(RecordOf(box)->HasEntry(front));  // the old entry stays until the next open
  {
    ZK_TestFailCreateUuid failing;
    EXPECT_TRUE(ZK_UuidIsNil(Save(L"Top", {box})));
  }
  EXPECT_EQ(Table().Count(), 2);
}

TEST_F(StanceCycleTest, UnknownStancesChangeNothing) {
  const ZK_UUID box = AddBox();
  Save(L"Front", {box});
  const ZK_UUID unknown = ZK_UuidFromString("11111111-2222-4333-8444-555555555555");
  ZK_SimpleArray<const CTarsaObject*> objects;
  ZK_wString name(L"kept");
  for (const ZK_UUID& id : {unknown, ZK_nil_uuid}) {
    EXPECT_FALSE(access_.GetStanceObjects(*doc_, id, objects));
    EXPECT_FALSE(access_.GetStanceName(*doc_, id, name));
    EXPECT_FALSE(access_.RestoreStance(*doc_, id));
    EXPECT_FALSE(access_.RenameStance(*doc_, id, L"Other"));
    EXPECT_FALSE(access_.UpdateStance(*doc_, id));
    EXPECT_FALSE(access_.AppendStance(*doc_, id, Objects({box})));
    EXPECT_FALSE(access_.DeleteStance(*doc_, id));
  }
  EXPECT_EQ(objects.Count(), 0);
  EXPECT_EQ(name, L"kept");
  EXPECT_EQ(Table().Count(), 1);
}

TEST_F(StanceCycleTest, UndoPutsTheTableBackAfterSaveDeleteAndRename) {
  const ZK_UUID box = AddBox();
  const ZK_UUID front = Save(L"Front", {box});
  const ZK_UUID side = Save(L"Side", {box});
  const ZK_UUID top = Save(L"Top", {box});
  const std::vector<ZK_UUID> before = StanceIds();

  Step([&] { access_.DeleteStance(*doc_, side); });
  Step([&] { EXPECT_TRUE(access_.RenameStance(*doc_, top, L"Above")); });
  Step([&] { Save(L"front", {box}); });
  EXPECT_EQ(Table().Count(), 2);
  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));
  EXPECT_EQ(Table().FindByName(L"Front")->m_id, front);
  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));
  EXPECT_EQ(Table().FindById(top)->m_name, L"Top");
  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));
  EXPECT_EQ(StanceIds(), before);
}

TEST_F(StanceCycleTest, RestoreAndUnchangedStepsAddNoUndoRecordOfThePlugIn) {
  const ZK_UUID box = AddBox();
  const ZK_UUID front = Save(L"Front", {box});
  const int steps = CTarsaStandIn::UndoStepCount(*doc_);
  Step([&] { EXPECT_FALSE(access_.RenameStance(*doc_, front, L"FRONT")); });  // its own name
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps);

  Move(box, kShift);
  const auto moved = Placement(box);
  Step([&] { access_.RestoreStance(*doc_, front); });
  ASSERT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps + 1);
  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));  // only the move back is undone
  ExpectNear(Placement(box), moved);
  EXPECT_EQ(Table().FindById(front)->m_name, L"Front");
}

}  // namespace
