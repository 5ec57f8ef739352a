// Stances as a user meets them through the host's own commands: what a command makes of a stance
// object, copies, duplicates, replacements and deletions.

#include <string>
#include <vector>

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
  // Runs a host command on the objects, with the answers that follow the object prompt; the
  // objects it added, in document order.
  std::vector<ZK_UUID> On(const wchar_t* command, const std::vector<ZK_UUID>& ids,
                          const wchar_t* then = L"") {
    const std::vector<ZK_UUID> before = AllObjects();
    Run(std::wstring(L"-_") + command + L" " + Pick(ids) + L" " + then);
    return AddedSince(before);
  }
  void Stance(const std::wstring& words) { Run(L"-_Stance " + words + L" _Enter"); }
  void SaveStance(const wchar_t* name, const std::vector<ZK_UUID>& ids) {
    Stance(std::wstring(L"_Save \"") + name + L"\" " + Pick(ids));
  }
  void Restore(const wchar_t* name) { Stance(std::wstring(L"_Restore \"") + name + L"\""); }
  // Deletes the object as a script or another plug-in would, outside any command.
  void Delete(const ZK_UUID& id) { doc_->DeleteObject(CTarsaObjRef(Object(id))); }
};

// A host command of these tests: picks objects, then makes the change with them, all within one
// command.
template <void (*change)(CTarsaDoc& doc, const CTarsaGetObject& picked)>
class TestCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext& context) override {
    CTarsaGetObject get;
    if (get.GetObjects(1, 0) != CTarsaGet::object) return cancel;
    change(*context.Document(), get);
    return success;
  }
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
TestCommand<Split> theSplitCommand(L"SplitTest", "7A8B9C0D-1E2F-4A3B-8C4D-5E6F7A8B9C0D");
TestCommand<Join> theJoinCommand(L"JoinTest", "3E4F5061-7283-4A94-8B5C-6D7E8F90A1B2");

// What a command makes of a deleted stance object takes its stances, and only those: the first
// object it adds after the deletion, or what it added before the deletion, which the later
// deletions leave alone. What the command moves meanwhile takes nothing. The stances no object
// carries any more go once, at the command's end.
TEST_F(StancesThroughCommandsTest, DeletedCopiedAndReplacedObjectsHandOnTheirStances) {
  const ZK_UUID a = AddBox(), b = AddBox(), c = AddBox();
  SaveStance(L"P", {b});
  SaveStance(L"Q", {b, c});
  const ZK_UUID d = AddBox();
  const ZK_UUID point = On(L"SplitTest", {c, a, d}).at(0);
  EXPECT_EQ(Members(L"Q"), (std::vector<ZK_UUID>{b, point}));
  EXPECT_EQ(Members(L"P"), std::vector<ZK_UUID>{b});

  TakeStanceChanges();
  const std::vector<ZK_UUID> joined = On(L"JoinTest", {point, b});
  EXPECT_EQ(Names(), std::vector<std::wstring>{L"Q"});
  EXPECT_EQ(Members(L"Q"), joined);
  EXPECT_EQ(TakeStanceChanges(), 1);
  On(L"Delete", {AddBox()});
  EXPECT_EQ(TakeStanceChanges(), 0) << "an object without a record changes no table";

  // Outside a command, objects deleted one at a time in one step (a script's, another
  // plug-in's) have the removal at the step's end, each stance removed told to the host.
  SaveStance(L"R", {a, d});
  SaveStance(L"S", {a});
  TakeStanceChanges();
  Step([&] { Delete(a), Delete(d); });
  EXPECT_EQ(Names(), std::vector<std::wstring>{L"Q"});
  EXPECT_EQ(TakeStanceChanges(), 3) << "R, S, then the removal's own notice";
  Run(L"-_Undo");
  EXPECT_EQ(Members(L"R"), (std::vector<ZK_UUID>{a, d})) << "deletions and removal are one step";
  EXPECT_EQ(Table().Count(), 3);

  // With no step being recorded, the removal comes at the deletion.
  Delete(a);
  EXPECT_EQ(StanceId(L"S"), ZK_nil_uuid);
  EXPECT_EQ(Members(L"R"), std::vector<ZK_UUID>{d});

  // A copy, a duplicate or a replacement takes the stances too, each saved placement carried
  // along: on restore it lands where its source lands, moved as it was made.
  Move(d, ZK_Xform::Rotation(0.4, {0, 0, 1}, {1, 1, 0}));  // a record that is no translation
  SaveStance(L"T", {d});
  const std::vector<ZK_3dPoint> saved = Placement(d);
  Move(d, ZK_Xform::Rotation(1.1, {1, 0, 0}, {3, 3, 3}));
  const ZK_UUID copy = On(L"Copy", {d}, L"10,0,0").at(0);
  On(L"Move", {d}, L"0,4,0");
  On(L"Replace", {d});  // new geometry in its place, which keeps nothing of the move before it
  const std::vector<ZK_UUID> twins = On(L"Duplicate", {d, copy});
  Restore(L"T");
  ExpectNear(Placement(d), saved);
  std::vector<ZK_3dPoint> copy_saved = saved;
  for (ZK_3dPoint& p : copy_saved) p.x += 10;
  ExpectNear(Placement(copy), copy_saved);
  ExpectNear(Placements(twins), Placements({d, copy}));
  // A restore is a move too: a duplicate made after it stays with its source.
  On(L"Move", {d}, L"0,0,2");
  Restore(L"T");
  const ZK_UUID after_restore = On(L"Duplicate", {d}).at(0);
  On(L"Move", {d, after_restore}, L"1,1,1");
  Restore(L"T");
  ExpectNear(Placement(after_restore), Placement(d));
}

}  // namespace
