// Stances as a user meets them through the host's own commands: what a command makes of a stance
// object, copies, duplicates, replacements and deletions.

#include <string>
#include <vector>

#include "events/event_watcher.h"
#include "shell/shell_command.h"
#include "testing/stance_document_test.h"
#include "testing/stand_ins.h"

namespace {

class StancesThroughCommandsTest : public StanceDocumentTest {
 protected:
  // Runs a macro as the user would type it; what it printed is dropped.
  void Run(const std::wstring& macro) {
    CTarsaStandIn::CommandLine().RunScript(macro.c_str(), 0);
    CTarsaStandIn::CommandLine().TakeOutput();
  }
  // Runs a host command on the objects, with the answers that follow the object prompt.
  void On(const wchar_t* command, const std::vector<ZK_UUID>& ids, const wchar_t* then = L"") {
    Run(std::wstring(L"-_") + command + L" " + Pick(ids) + L" " + then);
  }
  // Runs a host command as On does; the objects it added, in document order.
  std::vector<ZK_UUID> Added(const wchar_t* command, const std::vector<ZK_UUID>& ids,
                             const wchar_t* then = L"") {
    const std::vector<ZK_UUID> before = AllObjects();
    On(command, ids, then);
    return AddedSince(before);
  }
  void Stance(const std::wstring& words) { Run(L"-_Stance " + words + L" _Enter"); }
  void SaveStance(const wchar_t* name, const std::vector<ZK_UUID>& ids) {
    Stance(std::wstring(L"_Save \"") + name + L"\" " + Pick(ids));
  }
  void Restore(const wchar_t* name) { Stance(std::wstring(L"_Restore \"") + name + L"\""); }
};

ZK_Geometry* Segment() { return new ZK_Polyline({{0, 0, 0}, {1, 0, 0}}); }
ZK_Geometry* Bent() { return new ZK_Polyline({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}); }

// A host command of these tests: picks objects, then changes the document with them, all within
// one command.
class TestCommand : public CTarsaShellCommand {
 public:
  using Change = void (*)(CTarsaDoc& doc, const CTarsaGetObject& picked);
  TestCommand(const char* id, const wchar_t* name, Change change)
      : CTarsaShellCommand(name, id), m_change(change) {}
  result Execute(const CTarsaCommandContext& context) override {
    CTarsaGetObject get;
    get.SetCommandPrompt(L"Select objects");
    if (get.GetObjects(1, 0) != CTarsaGet::object) return cancel;
    m_change(*context.Document(), get);
    return success;
  }

 private:
  Change m_change;
};

// Deletes the first object picked, moves the others by 0,0,1, then adds two points.
void Split(CTarsaDoc& doc, const CTarsaGetObject& picked) {
  doc.DeleteObject(picked.Object(0));
  for (int i = 1; i < picked.ObjectCount(); ++i) {
    doc.TransformObject(picked.Object(i), ZK_Xform::Translation(0, 0, 1));
  }
  for (int i = 0; i < 2; ++i) doc.AddObject(new CTarsaObject(new ZK_Point()));
}
// Adds a point, then deletes the objects picked.
void Join(CTarsaDoc& doc, const CTarsaGetObject& picked) {
  doc.AddObject(new CTarsaObject(new ZK_Point()));
  for (int i = 0; i < picked.ObjectCount(); ++i) doc.DeleteObject(picked.Object(i));
}
TestCommand theSplitCommand("7A8B9C0D-1E2F-4A3B-8C4D-5E6F7A8B9C0D", L"SplitTest", Split);
TestCommand theJoinCommand("3E4F5061-7283-4A94-8B5C-6D7E8F90A1B2", L"JoinTest", Join);

// What a command makes of a deleted stance object takes its stances, and only those: the first
// object it adds after the deletion, or what it added before the deletion, which the later
// deletions leave alone. What the command moves meanwhile takes nothing. The stances no object
// carries any more go once, at the command's end.
TEST_F(StancesThroughCommandsTest, DeletedObjectsHandOnTheirStancesAndUnusedStancesGoOnce) {
  const ZK_UUID a = Add(Segment()), b = Add(Segment()), c = Add(Segment());
  SaveStance(L"P", {b});
  SaveStance(L"Q", {b, c});
  const ZK_UUID d = Add(Segment());
  const std::vector<ZK_UUID> points = Added(L"SplitTest", {c, a, d});
  ASSERT_EQ(points.size(), 2u);
  EXPECT_EQ(Members(L"Q"), (std::vector<ZK_UUID>{b, points[0]}));
  EXPECT_EQ(Members(L"P"), std::vector<ZK_UUID>{b});

  TakeStanceChanges();
  const std::vector<ZK_UUID> joined = Added(L"JoinTest", {points[0], b});
  ASSERT_EQ(joined.size(), 1u);
  EXPECT_EQ(Names(), std::vector<std::wstring>{L"Q"});
  EXPECT_EQ(Members(L"Q"), joined);
  EXPECT_EQ(TakeStanceChanges(), 1);
  On(L"Delete", {Add(Segment())});
  EXPECT_EQ(TakeStanceChanges(), 0) << "an object without a record changes no table";

  // Outside a command, objects deleted one at a time in one step (a script's, another
  // plug-in's) have the removal at the step's end, each stance removed told to the host.
  SaveStance(L"R", {a, d});
  SaveStance(L"S", {a});
  TakeStanceChanges();
  Step([&] {
    doc_->DeleteObject(CTarsaObjRef(Object(a)));
    doc_->DeleteObject(CTarsaObjRef(Object(d)));
  });
  EXPECT_EQ(Names(), std::vector<std::wstring>{L"Q"});
  EXPECT_EQ(TakeStanceChanges(), 3) << "R, S, then the removal's own notice";
  Run(L"-_Undo");
  EXPECT_EQ(Members(L"R"), (std::vector<ZK_UUID>{a, d})) << "deletions and removal are one step";
  EXPECT_EQ(Table().Count(), 3);

  // With no step being recorded, the removal comes at the deletion.
  doc_->DeleteObject(CTarsaObjRef(Object(a)));
  EXPECT_EQ(StanceId(L"S"), ZK_nil_uuid);
  EXPECT_EQ(Members(L"R"), std::vector<ZK_UUID>{d});
}

// A copy, a duplicate or a replacement of a stance object takes its stances, each saved placement
// carried along with it: on restore it lands where its source lands, moved as it was made.
TEST_F(StancesThroughCommandsTest, CopiesDuplicatesAndReplacementsLandWithTheirSourcesOnRestore) {
  const ZK_UUID a = Add(Bent());
  Move(a, ZK_Xform::Rotation(0.4, {0, 0, 1}, {1, 1, 0}));  // a record that is no translation
  SaveStance(L"P", {a});
  const std::vector<ZK_3dPoint> saved = Placement(a);
  Move(a, ZK_Xform::Rotation(1.1, {1, 0, 0}, {3, 3, 3}));
  const ZK_UUID copy = Added(L"Copy", {a}, L"10,0,0").at(0);
  On(L"Move", {a}, L"0,4,0");
  On(L"Replace", {a});  // new geometry in its place, which keeps nothing of the move before it
  const std::vector<ZK_UUID> twins = Added(L"Duplicate", {a, copy});
  ASSERT_EQ(twins.size(), 2u);

  Restore(L"P");
  ExpectNear(Placement(a), saved);
  std::vector<ZK_3dPoint> copy_saved = saved;
  for (ZK_3dPoint& p : copy_saved) p.x += 10;
  ExpectNear(Placement(copy), copy_saved);
  ExpectNear(Placement(twins[0]), Placement(a));
  ExpectNear(Placement(twins[1]), Placement(copy));
  // A restore is a move too: a duplicate made after it stays with its source.
  On(L"Move", {a}, L"0,0,2");
  Restore(L"P");
  const ZK_UUID after_restore = Added(L"Duplicate", {a}).at(0);
  On(L"Move", {a, after_restore}, L"1,1,1");
  Restore(L"P");
  ExpectNear(Placement(after_restore), Placement(a));
}

}  // namespace
