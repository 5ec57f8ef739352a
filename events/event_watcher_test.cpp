#include "events/event_watcher.h"

#include "testing/stance_document_test.h"

namespace {

// Scenarios with the plug-in loaded and its watcher listening.
class EventWatcherTest : public StanceDocumentTest {
 protected:
  static CKorvoEventWatcher& Watcher() { return *KorvoPlugIn().EventWatcher(); }
  void Command(const wchar_t* macro) { TarsaApp().RunScript(macro, 0); }
  // The ids of the objects named so, in document order.
  std::vector<ZK_UUID> Named(const wchar_t* name) {
    std::vector<ZK_UUID> ids;
    CTarsaObjectIterator it(*doc_);
    for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
      if (object->Attributes().m_name == name) ids.push_back(object->ModelObjectId());
    }
    return ids;
  }
  static ZK_3dPoint First(const std::vector<ZK_3dPoint>& points) { return points.front(); }
};

TEST_F(EventWatcherTest, ACopyFollowsItsSourceOnRestore) {
  const ZK_UUID door = AddNamed(L"door", new ZK_Box({0, 0, 0}, {1, 2, 3}));
  Move(door, ZK_Xform::Rotation(0.4, {0, 0, 1}, {1, 1, 0}));
  const ZK_UUID front = Save(L"Front", {door});
  Command(L"-_Copy door _Enter 5,0,0");
  const std::vector<ZK_UUID> doors = Named(L"door");
  ASSERT_EQ(doors.size(), 2u);
  EXPECT_EQ(RecordOf(doors[1])->m_accumulated_xform, RecordOf(door)->m_accumulated_xform);

  const ZK_Xform turn = ZK_Xform::Rotation(1.1, {1, 0, 0}, {3, 3, 3});
  const auto source_before = First(Placement(door));
  const auto copy_before = First(Placement(doors[1]));
  Move(door, turn);
  Move(doors[1], turn);
  access_.RestoreStance(*doc_, front);
  const auto source_after = First(Placement(door));
  const auto copy_after = First(Placement(doors[1]));
  EXPECT_NEAR(source_after.x, source_before.x, 1e-9);
  EXPECT_NEAR(copy_after.x - copy_before.x, source_after.x - source_before.x, 1e-9);
  EXPECT_NEAR(copy_after.y - copy_before.y, source_after.y - source_before.y, 1e-9);
  EXPECT_NEAR(copy_after.z - copy_before.z, source_after.z - source_before.z, 1e-9);
}

TEST_F(EventWatcherTest, AMoveKeepsTheRecordAsTheTransformLeftIt) {
  const ZK_UUID door = AddNamed(L"door", new ZK_Box({0, 0, 0}, {1, 1, 1}));
  const ZK_UUID front = Save(L"Front", {door});
  Command(L"-_Move door _Enter 0,4,0");
  EXPECT_EQ(RecordOf(door)->m_accumulated_xform, ZK_Xform::Translation(0, 4, 0));
  EXPECT_NE(Table().FindById(front), nullptr);
}

// Deletes the objects picked, then adds two new points, within one command.
class SplitCommand : public CTarsaCommand {
 public:
  ZK_UUID CommandId() const override {
    return ZK_UuidFromString("7A8B9C0D-1E2F-4A3B-8C4D-5E6F7A8B9C0D");
  }
  const wchar_t* EnglishCommandName() override { return L"SplitTest"; }
  result Execute(const CTarsaCommandContext& context) override {
    CTarsaGetObject get;
    get.SetCommandPrompt(L"Select objects");
    if (get.GetObjects(1, 0) != CTarsaGet::object) return cancel;
    for (int i = 0; i < get.ObjectCount(); ++i) context.Document()->DeleteObject(get.Object(i));
    for (int i = 0; i < 2; ++i) {
      CTarsaObjectAttributes attributes;
      attributes.m_name = L"half";
      context.Document()->AddObject(new CTarsaObject(new ZK_Point(), attributes));
    }
    return success;
  }
};

TEST_F(EventWatcherTest, ACommandHandsADeletedObjectsRecordOnToWhatItAdds) {
  SplitCommand split;
  const ZK_UUID beam = AddNamed(L"beam", new ZK_Polyline({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}));
  const ZK_UUID post = AddNamed(L"post", new ZK_Box({0, 0, 0}, {1, 1, 1}));
  const ZK_UUID front = Save(L"Front", {beam, post});

  Command(L"-_Explode beam _Enter");  // adds the pieces, then deletes the beam
  ASSERT_EQ(Named(L"beam").size(), 2u);
  for (const ZK_UUID& piece : Named(L"beam")) EXPECT_TRUE(RecordOf(piece)->HasEntry(front));

  Command(L"-_SplitTest post _Enter");  // deletes the post, then adds two points
  const std::vector<ZK_UUID> halves = Named(L"half");
  ASSERT_EQ(halves.size(), 2u);
  EXPECT_TRUE(RecordOf(halves[0])->HasEntry(front));
  EXPECT_EQ(RecordOf(halves[1]), nullptr);
  EXPECT_NE(Table().FindById(front), nullptr);
}

TEST_F(EventWatcherTest, UndoAndRedoTellTheHost) {
  Save(L"Front", {});
  Step([&] { access_.RenameStance(*doc_, Table().m_entries[0]->m_id, L"Back"); });
  TakeStanceChanges();
  CTarsaStandIn::Undo(*doc_);
  CTarsaStandIn::Redo(*doc_);
  EXPECT_EQ(TakeStanceChanges(), 2);
  EXPECT_EQ(Table().m_entries[0]->m_name, L"Back");
}

}  // namespace
