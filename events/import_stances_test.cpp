#include <cstring>

#include "events/event_watcher.h"
#include "operations/every_object_iterator.h"
#include "testing/stance_document_test.h"
#include "testing/stand_ins.h"

namespace {

// Model files with the plug-in loaded: its watcher listening and its document data read and
// written by the host.
class ModelFileTest : public StanceDocumentTest {
 protected:
  void SetUp() override {
    StanceDocumentTest::SetUp();
    path_ = ModelPath();
  }
  CTarsaDoc* OpenFile() {
    std::wstring error;
    return CTarsaStandIn::OpenDocument(path_, error);
  }
  static CKorvoDocData& TableOf(CTarsaDoc& doc) {
    return *KorvoPlugIn().DocData(doc.RuntimeSerialNumber());
  }
  static int ObjectCount(CTarsaDoc& doc) {
    int count = 0;
    CKorvoEveryObjectIterator it(doc);
    for (const CTarsaObject* object = it.First(); object; object = it.Next()) ++count;
    return count;
  }

  std::string path_;
};

// An opened model keeps its stances and records, lights and hidden objects included, less the
// record entries of stances it no longer has and the stances no object carries.
TEST_F(ModelFileTest, AnOpenedModelKeepsWhatItsObjectsCarry) {
  const ZK_UUID box = AddBox();
  const ZK_UUID hidden = AddBox(TarsaObjectMode::hidden);
  const ZK_UUID light = AddLight();
  const auto saved = Placement(light);
  const ZK_UUID gone = Save(L"Gone", {box});
  Save(L"Front", {box, hidden, light});
  Save(L"Empty", {});
  Save(L"Side", {box});
  access_.DeleteStance(*doc_, gone);  // the record keeps its entry for the deleted stance
  Move(light, ZK_Xform::Translation(1, 2, 3));
  SaveModel(path_);

  CTarsaDoc* opened = OpenFile();
  ASSERT_NE(opened, nullptr);
  const CKorvoDocData& table = TableOf(*opened);
  ASSERT_EQ(table.Count(), 2);
  EXPECT_EQ(table.m_entries[0]->m_id, StanceId(L"Front"));
  EXPECT_EQ(table.m_entries[1]->m_id, StanceId(L"Side"));
  EXPECT_EQ(CKorvoUserData::Of(opened->LookupObject(box))->m_entries.GetSize(), 2);
  EXPECT_EQ(opened->LookupObject(hidden)->ObjectState(), CTarsaObject::hidden_object);
  ASSERT_EQ(opened->LightTable().LightCount(), 1);
  EXPECT_TRUE(access_.RestoreStance(*opened, table.FindByName(L"Front")->m_id));
  const ZK_Light& restored = opened->LightTable()[0]->Light();
  EXPECT_NEAR(restored.m_location.z, saved[0].z, 1e-9);
  EXPECT_EQ(Members(L"Side", opened), std::vector<ZK_UUID>{box});
}

// The document's own model file imported twice: each import adds copies of its stances carried by
// its own objects only, under names made free against the document's and against each other (a
// crafted file whose two stances differ only in case imports both, and a record that lists one
// stance twice carries its copy once).
TEST_F(ModelFileTest, ImportingTwiceGivesTwoSetsOfStancesEachCarriedByItsOwnObjects) {
  const ZK_UUID box = AddBox();
  const ZK_UUID pose = Save(L"Pose", {box});
  Save(L"Unused by the file", {});
  const ZK_UUID shouted = ZK_UuidFromString("0C1D2E3F-4A5B-4C6D-8E7F-8091A2B3C4D5");
  Table().AddFree(shouted, L"POSE");
  CKorvoUserData* crafted = CKorvoUserData::Of(doc_->LookupObject(box));
  crafted->Add(shouted, ZK_Xform());
  crafted->Add(pose, ZK_Xform::Translation(0, 0, 1));  // Pose listed twice
  SaveModel(path_);
  Table().Remove(shouted);
  Save(L"Pose - Copy", {box});
  const INT_PTR own_entries = RecordOf(box)->m_entries.GetSize();

  ASSERT_TRUE(ReadModel(path_));
  ASSERT_TRUE(ReadModel(path_));
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Pose", L"Pose - Copy", L"Pose - Copy (2)",
                                                L"POSE - Copy (3)", L"Pose - Copy (4)",
                                                L"POSE - Copy (5)"}));
  const std::vector<ZK_UUID> first = Members(L"Pose - Copy (2)");
  const std::vector<ZK_UUID> second = Members(L"Pose - Copy (4)");
  ASSERT_EQ(first.size(), 1u);
  ASSERT_EQ(second.size(), 1u);
  EXPECT_NE(first[0], second[0]);
  EXPECT_EQ(Members(L"POSE - Copy (3)"), first);
  EXPECT_EQ(RecordOf(first[0])->m_entries.GetSize(), 2);
  EXPECT_EQ(Members(L"Pose"), std::vector<ZK_UUID>{box});
  EXPECT_EQ(RecordOf(box)->m_entries.GetSize(), own_entries);  // the document's own are untouched

  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));  // the second import, stances and objects, is one step
  EXPECT_EQ(Table().Count(), 4);
}

TEST_F(ModelFileTest, AnImportedRecordKeepsEntriesOfOtherStancesFirstThenTheFilesInItsOrder) {
  const ZK_UUID box = AddBox();
  const ZK_UUID first = Save(L"First", {box});
  Move(box, ZK_Xform::Translation(1, 0, 0));
  const ZK_UUID second = Save(L"Second", {box});
  Move(box, ZK_Xform::Translation(0, 2, 0));
  const ZK_UUID gone = Save(L"Gone", {box});
  access_.DeleteStance(*doc_, gone);
  CKorvoUserData* own = CKorvoUserData::Of(doc_->LookupObject(box));
  ZK_Xform xform[2];
  ASSERT_TRUE(own->GetXform(first, xform[0]) && own->GetXform(second, xform[1]));
  own->Remove(first);  // the record's order is now Gone, Second, First
  own->Remove(second);
  own->Add(second, xform[1]);
  own->Add(first, xform[0]);
  std::vector<ZK_Xform> saved;
  for (INT_PTR e = 0; e < RecordOf(box)->m_entries.GetSize(); ++e) {
    saved.push_back(RecordOf(box)->m_entries[e]->m_xform);
  }
  SaveModel(path_);

  ASSERT_TRUE(ReadModel(path_));
  const std::vector<ZK_UUID> imported = Members(L"First - Copy");
  ASSERT_EQ(imported.size(), 1u);
  const CKorvoUserData* record = RecordOf(imported[0]);
  ASSERT_EQ(record->m_entries.GetSize(), 3);
  const ZK_UUID ids[] = {gone, StanceId(L"First - Copy"), StanceId(L"Second - Copy")};
  const ZK_Xform* xforms[] = {&saved[0], &saved[2], &saved[1]};
  for (int e = 0; e < 3; ++e) {
    EXPECT_EQ(record->m_entries[e]->m_id, ids[e]) << e;
    EXPECT_EQ(std::memcmp(&record->m_entries[e]->m_xform, xforms[e], sizeof(ZK_Xform)), 0) << e;
  }
}

TEST_F(ModelFileTest, AnAttachedModelStaysOutOfEveryVisit) {
  const ZK_UUID box = AddBox();
  Save(L"Front", {box});
  SaveModel(path_);
  Table().RemoveAll();
  const int objects = ObjectCount(*doc_);
  ASSERT_TRUE(ReadModel(path_, true));
  EXPECT_EQ(ObjectCount(*doc_), objects);
  EXPECT_EQ(Table().Count(), 0);  // its stances are carried by reference objects only
}

}  // namespace
