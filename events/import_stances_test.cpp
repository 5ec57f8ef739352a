#include <utility>
#include <vector>

#include "events/event_watcher.h"
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
  // An object's record as (stance, saved placement) pairs, in its order.
  std::vector<std::pair<ZK_UUID, ZK_Xform>> Entries(const CTarsaObject* object) const {
    std::vector<std::pair<ZK_UUID, ZK_Xform>> entries;
    const CKorvoUserData* record = CKorvoUserData::Of(object);
    for (INT_PTR e = 0; record && e < record->m_entries.GetSize(); ++e) {
      entries.emplace_back(record->m_entries[e]->m_id, record->m_entries[e]->m_xform);
    }
    return entries;
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

  std::wstring error;
  CTarsaDoc* opened = CTarsaStandIn::OpenDocument(path_, error);
  ASSERT_NE(opened, nullptr);
  const CKorvoDocData& table = *KorvoPlugIn().DocData(opened->RuntimeSerialNumber());
  ASSERT_EQ(table.Count(), 2);
  EXPECT_EQ(table.m_entries[0]->m_id, StanceId(L"Front"));
  EXPECT_EQ(table.m_entries[1]->m_id, StanceId(L"Side"));
  EXPECT_EQ(Entries(opened->LookupObject(box)).size(), 2u);
  EXPECT_EQ(opened->LookupObject(hidden)->ObjectState(), CTarsaObject::hidden_object);
  ASSERT_EQ(opened->LightTable().LightCount(), 1);
  EXPECT_TRUE(access_.RestoreStance(*opened, table.FindByName(L"Front")->m_id));
  EXPECT_NEAR(opened->LightTable()[0]->Light().m_location.z, saved[0].z, 1e-9);
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
  const auto own_entries = Entries(Object(box));

  ASSERT_TRUE(ReadModel(path_));
  ASSERT_TRUE(ReadModel(path_));
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Pose", L"Pose - Copy", L"Pose - Copy (2)",
                                                L"POSE - Copy (3)", L"Pose - Copy (4)",
                                                L"POSE - Copy (5)"}));
  const std::vector<ZK_UUID> first = Members(L"Pose - Copy (2)");
  const std::vector<ZK_UUID> second = Members(L"Pose - Copy (4)");
  ASSERT_EQ(first.size(), 1u);
  EXPECT_EQ(second.size(), 1u);
  EXPECT_NE(second, first);
  EXPECT_EQ(Members(L"POSE - Copy (3)"), first);
  EXPECT_EQ(Entries(Object(first[0])).size(), 2u);
  EXPECT_EQ(Members(L"Pose"), std::vector<ZK_UUID>{box});
  EXPECT_EQ(Entries(Object(box)), own_entries);  // the document's own are untouched

  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));  // the second import, stances and objects, is one step
  EXPECT_EQ(Table().Count(), 4);
}

TEST_F(ModelFileTest, AnImportedRecordKeepsEntriesOfOtherStancesFirstThenTheFilesInItsOrder) {
  const ZK_UUID box = AddBox();
  Save(L"First", {box});
  Move(box, ZK_Xform::Translation(1, 0, 0));
  Save(L"Second", {box});
  Move(box, ZK_Xform::Translation(0, 2, 0));
  access_.DeleteStance(*doc_, Save(L"Gone", {box}));
  const CKorvoUserData* own = RecordOf(box);
  const CKorvoUserData::USER_DATA reordered[] = {*own->m_entries[2], *own->m_entries[1],
                                                 *own->m_entries[0]};  // Gone, Second, First
  CKorvoUserData::Of(Object(box))->SetEntries(reordered, 3);
  const auto saved = Entries(Object(box));
  SaveModel(path_);

  ASSERT_TRUE(ReadModel(path_));
  const std::vector<ZK_UUID> imported = Members(L"First - Copy");
  ASSERT_EQ(imported.size(), 1u);
  EXPECT_EQ(Entries(Object(imported[0])),
            (decltype(saved){saved[0],
                             {StanceId(L"First - Copy"), saved[2].second},
                             {StanceId(L"Second - Copy"), saved[1].second}}));
}

}  // namespace
