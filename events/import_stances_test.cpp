#include <string>
#include <vector>

#include "testing/record_entries.h"
#include "testing/stance_document_test.h"
#include "testing/stand_ins.h"

namespace {

// Model files with the plug-in loaded: its watcher listening and its document data read and
// written by the host.
using ModelFileTest = StanceDocumentTest;

// A model whose records carry an entry of a deleted stance, a stance listed twice, a stance whose
// name differs from another's only in case and a stance with no name (a crafted file), and whose
// table has a stance no object carries.
//
// Opened, the model keeps its stances and records, lights and hidden objects included, less the
// stale entries and the unused stance. Imported twice into its own document, each import adds
// copies of its stances carried by its own objects only, under names made free against the
// document's and against each other; an imported record keeps the entries of other stances first,
// then the file's in the file's order, each with its saved placement, and a stance listed twice
// once. Attached as a reference, its stances are carried by reference objects only, which every
// visit of the document leaves out: none is merged. The document's own records stay as they were.
TEST_F(ModelFileTest, OpenedImportedOrAttachedAModelBringsWhatItsObjectsCarry) {
  const std::string path = ModelPath();
  const ZK_UUID box = AddBox();
  const ZK_UUID hidden = AddBox(TarsaObjectMode::hidden);
  const ZK_UUID light = AddLight();
  const ZK_UUID pose = Save(L"Pose", {box, hidden, light});
  Save(L"Unused by the file", {});
  const ZK_UUID shouted = ZK_UuidFromString("0C1D2E3F-4A5B-4C6D-8E7F-8091A2B3C4D5");
  Table().AddFree(shouted, L"POSE");
  const ZK_UUID unnamed = ZK_UuidFromString("5E6F7A8B-9C0D-4E1F-8A2B-3C4D5E6F7A8B");
  Table().AddFree(unnamed, L"");  // a name no import may add
  CKorvoUserData::Of(Object(hidden))->Add(unnamed, ZK_Xform());
  const ZK_UUID gone = Save(L"Gone", {box});
  access_.DeleteStance(*doc_, gone);  // the record keeps its entry for the deleted stance
  const ZK_Xform up = ZK_Xform::Translation(0, 0, 1), side = ZK_Xform::Translation(1, 0, 0);
  const CKorvoUserData::USER_DATA crafted[] = {
      {gone, up}, {shouted, side}, {pose, ZK_Xform()}, {pose, up}};
  CKorvoUserData::Of(Object(box))->SetEntries(crafted, 4);
  Move(light, ZK_Xform::Translation(1, 2, 3));
  SaveModel(path);

  std::wstring error;
  CTarsaDoc* opened = CTarsaStandIn::OpenDocument(path, error);
  ASSERT_NE(opened, nullptr);
  EXPECT_EQ(Names(opened), (std::vector<std::wstring>{L"Pose", L"POSE", L""}));
  EXPECT_FALSE(CKorvoUserData::Of(opened->LookupObject(box))->HasEntry(gone));
  EXPECT_EQ(opened->LookupObject(hidden)->ObjectState(), CTarsaObject::hidden_object);
  ASSERT_EQ(opened->LightTable().LightCount(), 1);
  EXPECT_TRUE(access_.RestoreStance(*opened, pose));
  EXPECT_NEAR(opened->LightTable()[0]->Light().m_location.z, 10, 1e-9);
  EXPECT_EQ(Members(L"Pose", opened), (std::vector<ZK_UUID>{box, hidden, light}));

  Table().Remove(shouted);
  Table().Remove(unnamed);
  const auto own_entries = EntriesOf(RecordOf(box));
  ASSERT_TRUE(ReadModel(path) && ReadModel(path) && ReadModel(path, true));
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Pose", L"Pose - Copy", L"POSE - Copy (2)",
                                                L"Pose - Copy (3)", L"POSE - Copy (4)"}));
  const std::vector<ZK_UUID> first = Members(L"Pose - Copy");
  const std::vector<ZK_UUID> second = Members(L"Pose - Copy (3)");
  ASSERT_EQ(first.size(), 3u);
  EXPECT_EQ(second.size(), 3u);
  EXPECT_NE(second, first);
  EXPECT_EQ(EntriesOf(RecordOf(first[0])), (RecordEntries{{gone, up},
                                                          {StanceId(L"Pose - Copy"), ZK_Xform()},
                                                          {StanceId(L"POSE - Copy (2)"), side}}));
  EXPECT_EQ(Members(L"POSE - Copy (2)"), std::vector<ZK_UUID>{first[0]});
  EXPECT_EQ(Members(L"Pose"), (std::vector<ZK_UUID>{box, hidden, light}));
  EXPECT_EQ(EntriesOf(RecordOf(box)), own_entries);

  // The reference, then the second import, its stances and objects one step.
  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_) && CTarsaStandIn::Undo(*doc_));
  EXPECT_EQ(Table().Count(), 3);
}

}  // namespace
