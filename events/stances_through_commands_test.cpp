// Stances as a user meets them through the host's own commands: moves, copies, duplicates,
// explodes, replacements, deletions, undo and redo, and references.

#include <string>
#include <vector>

#include "events/event_watcher.h"
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
  void Stance(const std::wstring& words) { Run(L"-_Stance " + words + L" _Enter"); }
  void SaveStance(const wchar_t* name, const std::vector<ZK_UUID>& ids) {
    Stance(std::wstring(L"_Save \"") + name + L"\" " + Pick(ids));
  }
  void Restore(const wchar_t* name) { Stance(std::wstring(L"_Restore \"") + name + L"\""); }
  void Undo() { Run(L"-_Undo"); }
  void Redo() { Run(L"-_Redo"); }
};

ZK_Geometry* Segment() { return new ZK_Polyline({{0, 0, 0}, {1, 0, 0}}); }
ZK_Geometry* Bent() { return new ZK_Polyline({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}); }

// A command that deletes a stance object, then moves others, gives them nothing of it.
TEST_F(StancesThroughCommandsTest, ObjectsMovedAfterADeletionTakeNothingOfIt) {
  const ZK_UUID a = Add(Segment());
  const ZK_UUID b = Add(Segment());
  const ZK_UUID c = Add(Segment());
  SaveStance(L"P", {b});
  SaveStance(L"Q", {b, c});
  const ZK_UUID d = Add(Segment());
  On(L"DeleteThenMoveTest", {c, a, d});
  EXPECT_EQ(Members(L"Q"), std::vector<ZK_UUID>{b});
  EXPECT_EQ(Members(L"P"), std::vector<ZK_UUID>{b});
}

// A host command of these tests: picks objects, then changes the document with them, all within
// one command.
class TestCommand : public CTarsaCommand {
 public:
  using Change = void (*)(CTarsaDoc& doc, const CTarsaGetObject& picked);
  TestCommand(const char* id, const wchar_t* name, Change change)
      : m_id(ZK_UuidFromString(id)), m_name(name), m_change(change) {}
  ZK_UUID CommandId() const override { return m_id; }
  const wchar_t* EnglishCommandName() override { return m_name; }
  result Execute(const CTarsaCommandContext& context) override {
    CTarsaGetObject get;
    get.SetCommandPrompt(L"Select objects");
    if (get.GetObjects(1, 0) != CTarsaGet::object) return cancel;
    m_change(*context.Document(), get);
    return success;
  }

 private:
  ZK_UUID m_id;
  const wchar_t* m_name;
  Change m_change;
};

// Deletes the first object picked, then moves the others by 0,0,1.
TestCommand theDeleteThenMoveCommand("B4058109-C0D2-4DE4-9F50-6172839405B6", L"DeleteThenMoveTest",
                                     [](CTarsaDoc& doc, const CTarsaGetObject& picked) {
                                       doc.DeleteObject(picked.Object(0));
                                       for (int i = 1; i < picked.ObjectCount(); ++i) {
                                         doc.TransformObject(picked.Object(i),
                                                             ZK_Xform::Translation(0, 0, 1));
                                       }
                                     });

// Deletes the objects picked, then adds two new points.
TestCommand theSplitCommand("7A8B9C0D-1E2F-4A3B-8C4D-5E6F7A8B9C0D", L"SplitTest",
                            [](CTarsaDoc& doc, const CTarsaGetObject& picked) {
                              for (int i = 0; i < picked.ObjectCount(); ++i) {
                                doc.DeleteObject(picked.Object(i));
                              }
                              for (int i = 0; i < 2; ++i)
                                doc.AddObject(new CTarsaObject(new ZK_Point()));
                            });

TEST_F(StancesThroughCommandsTest, WhatACommandMakesOfAnObjectTakesThatObjectsStancesOnly) {
  const ZK_UUID plain = Add(Bent());
  const ZK_UUID posed = Add(Bent());
  SaveStance(L"P", {posed});
  std::vector<ZK_UUID> before = AllObjects();
  On(L"Explode", {plain, posed});  // each: pieces added, then the object deleted
  const std::vector<ZK_UUID> pieces = AddedSince(before);
  ASSERT_EQ(pieces.size(), 4u);
  EXPECT_EQ(Members(L"P"), (std::vector<ZK_UUID>{pieces[2], pieces[3]}));

  before = AllObjects();
  On(L"Rebuild", {pieces[0], pieces[2]});  // each: deleted, then made anew
  const std::vector<ZK_UUID> rebuilt = AddedSince(before);
  ASSERT_EQ(rebuilt.size(), 2u);
  EXPECT_EQ(Members(L"P"), (std::vector<ZK_UUID>{pieces[3], rebuilt[1]}));

  before = AllObjects();
  On(L"SplitTest", {pieces[3]});  // deleted, then two points added: the first takes its stances
  const std::vector<ZK_UUID> halves = AddedSince(before);
  ASSERT_EQ(halves.size(), 2u);
  EXPECT_EQ(Members(L"P"), (std::vector<ZK_UUID>{rebuilt[1], halves[0]}));
}

TEST_F(StancesThroughCommandsTest, ReplacingAnObjectByNewGeometryKeepsItInItsStances) {
  const ZK_UUID plain = Add(Bent());
  const ZK_UUID lamp = Add(Bent());
  SaveStance(L"P", {lamp});
  const std::vector<ZK_3dPoint> saved = Placement(lamp);
  On(L"Move", {lamp}, L"0,0,7");
  On(L"Replace", {plain, lamp});
  const std::vector<ZK_UUID> before = AllObjects();
  On(L"Duplicate", {lamp});
  const ZK_UUID twin = AddedSince(before)[0];
  EXPECT_EQ(Members(L"P"), (std::vector<ZK_UUID>{lamp, twin}));
  Restore(L"P");
  ExpectNear(Placement(lamp), saved);
  ExpectNear(Placement(twin), saved);  // the replacement kept nothing of the move before it
}

// A copy or a plain duplicate takes its source's stances, each saved placement carried along
// with it: on restore it lands where its source lands, moved as it was made.
TEST_F(StancesThroughCommandsTest, CopiesAndDuplicatesLandWithTheirSourcesOnRestore) {
  const ZK_UUID a = Add(Bent());
  Move(a, ZK_Xform::Rotation(0.4, {0, 0, 1}, {1, 1, 0}));  // a record that is no translation
  SaveStance(L"P", {a});
  const std::vector<ZK_3dPoint> saved = Placement(a);
  Move(a, ZK_Xform::Rotation(1.1, {1, 0, 0}, {3, 3, 3}));
  std::vector<ZK_UUID> before = AllObjects();
  On(L"Copy", {a}, L"10,0,0");
  const ZK_UUID copy = AddedSince(before)[0];
  On(L"Move", {a}, L"0,4,0");
  before = AllObjects();
  On(L"Duplicate", {a, copy});
  const std::vector<ZK_UUID> twins = AddedSince(before);
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
  before = AllObjects();
  On(L"Duplicate", {a});
  const ZK_UUID after_restore = AddedSince(before)[0];
  On(L"Move", {a, after_restore}, L"1,1,1");
  Restore(L"P");
  ExpectNear(Placement(after_restore), Placement(a));
}

// Every kind of stance change, undone and redone step by step: each step tells the host once.
TEST_F(StancesThroughCommandsTest, EachUndoAndRedoOfAStanceChangeTellsTheHostOnce) {
  const ZK_UUID a = Add(Segment());
  const ZK_UUID b = Add(Segment());
  SaveStance(L"Front", {a});
  SaveStance(L"Side", {a, b});
  Stance(L"_Save \"front\" _Yes " + Pick({b}));  // replaces Front
  Stance(L"_Rename \"Side\" \"Back\"");
  Stance(L"_Delete \"Back\"");
  const CKorvoDocData last(Table());
  TakeStanceChanges();
  while (CTarsaStandIn::UndoStepCount(*doc_) > 0) {
    Undo();
    EXPECT_EQ(TakeStanceChanges(), 1) << "undo";
  }
  EXPECT_TRUE(Table() == CKorvoDocData());
  while (CTarsaStandIn::RedoStepCount(*doc_) > 0) {
    Redo();
    EXPECT_EQ(TakeStanceChanges(), 1) << "redo";
  }
  EXPECT_TRUE(Table() == last);
  EXPECT_EQ(Members(L"front"), std::vector<ZK_UUID>{b});
}

TEST_F(StancesThroughCommandsTest, DeletionsRemoveUnusedStancesOnceAtTheCommandsEnd) {
  const ZK_UUID a = Add(Segment());
  const ZK_UUID b = Add(Segment());
  const ZK_UUID c = Add(Segment());
  SaveStance(L"P", {a, b});
  SaveStance(L"Q", {a});
  TakeStanceChanges();
  On(L"Delete", {a, b});
  EXPECT_EQ(Table().Count(), 0);
  EXPECT_EQ(TakeStanceChanges(), 1);
  Undo();  // the deletions and the removal are one step
  EXPECT_EQ(Table().Count(), 2);
  EXPECT_EQ(Members(L"P"), (std::vector<ZK_UUID>{a, b}));
  Redo();
  EXPECT_EQ(Object(a), nullptr);
  EXPECT_EQ(Table().Count(), 0) << "the removal comes back with the step";
  TakeStanceChanges();
  On(L"Delete", {Add(Segment())});
  EXPECT_EQ(TakeStanceChanges(), 0) << "an object without a record changes no table";

  // Outside a command, objects deleted one at a time in one step (a script's, another
  // plug-in's) have the removal at the step's end, each stance removed told to the host.
  const ZK_UUID d = Add(Segment());
  SaveStance(L"R", {c, d});
  SaveStance(L"S", {c});
  TakeStanceChanges();
  Step([&] {
    doc_->DeleteObject(CTarsaObjRef(Object(c)));
    doc_->DeleteObject(CTarsaObjRef(Object(d)));
  });
  EXPECT_EQ(Table().Count(), 0);
  EXPECT_EQ(TakeStanceChanges(), 3) << "R, S, then the removal's own notice";
  Undo();
  EXPECT_EQ(Members(L"R"), (std::vector<ZK_UUID>{c, d})) << "deletions and removal are one step";
  EXPECT_EQ(Table().Count(), 2);

  // With no step being recorded, the removal comes at the deletion.
  doc_->DeleteObject(CTarsaObjRef(Object(c)));
  EXPECT_EQ(StanceId(L"S"), ZK_nil_uuid);
  EXPECT_EQ(Members(L"R"), std::vector<ZK_UUID>{d});
}

// A document's own model file merged into it: the copies carry the copied stances only.
TEST_F(StancesThroughCommandsTest, MergingTheDocumentsOwnFileGivesTheCopiesTheirOwnStances) {
  const ZK_UUID a = Add(Segment());
  SaveStance(L"Front", {a});
  const std::string path = ModelPath();
  SaveModel(path);
  ASSERT_TRUE(ReadModel(path));
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Front", L"Front - Copy"}));
  EXPECT_EQ(Members(L"Front"), std::vector<ZK_UUID>{a});
  EXPECT_EQ(Members(L"Front - Copy").size(), 1u);
}

TEST_F(StancesThroughCommandsTest, AttachingAReferenceLeavesTheDocumentsRecordsAlone) {
  const ZK_UUID a = Add(Segment());
  SaveStance(L"P", {a});
  const std::string path = ModelPath();
  SaveModel(path);
  const std::vector<ZK_3dPoint> saved = Placement(a);
  On(L"Move", {a}, L"0,2,0");
  Stance(L"_Delete \"P\"");
  ASSERT_TRUE(ReadModel(path, true));
  Undo();
  Undo();
  ASSERT_EQ(Members(L"P"), std::vector<ZK_UUID>{a});
  Restore(L"P");
  ExpectNear(Placement(a), saved);
}

}  // namespace
