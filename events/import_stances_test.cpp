#include <cstdio>
#include <fstream>
#include <random>

#include <unistd.h>

#include "events/event_watcher.h"
#include "host/tarsa/standin/tarsa_model_file.h"
#include "operations/every_object_iterator.h"
#include "testing/stance_document_test.h"

namespace {

// Model files with the plug-in loaded: its watcher listening and its document data read and
// written by the host.
class ModelFileTest : public StanceDocumentTest {
 protected:
  void SetUp() override {
    StanceDocumentTest::SetUp();
    path_ = testing::TempDir() + "model_file_test_" + std::to_string(getpid()) + "_" +
            testing::UnitTest::GetInstance()->current_test_info()->name() + ".tsm";
  }
  void TearDown() override {
    std::remove(path_.c_str());
    StanceDocumentTest::TearDown();
  }
  static CKorvoEventWatcher& Watcher() { return *KorvoPlugIn().EventWatcher(); }
  void SaveFile() {
    std::wstring error;
    ASSERT_TRUE(TsWriteModelFile(*doc_, path_, error)) << ZK_wString(error).ToUtf8();
  }
  CTarsaDoc* OpenFile() {
    std::wstring error;
    return CTarsaStandIn::OpenDocument(path_, error);
  }
  bool ImportFile(bool reference = false) {
    std::wstring error;
    bool imported = false;
    Step([&] { imported = TsReadModelFile(*doc_, path_, !reference, reference, error); });
    return imported;
  }
  std::vector<unsigned char> FileBytes() const {
    std::ifstream file(path_, std::ios::binary);
    return std::vector<unsigned char>(std::istreambuf_iterator<char>(file), {});
  }
  void WriteBytes(const std::vector<unsigned char>& bytes, size_t size) const {
    std::ofstream file(path_, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(size));
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
  // The members of the stance of that name, in document order.
  std::vector<ZK_UUID> Members(CTarsaDoc& doc, const wchar_t* name) {
    std::vector<ZK_UUID> ids;
    ZK_SimpleArray<const CTarsaObject*> members;
    const CKorvoDocData::USER_DATA* stance = TableOf(doc).FindByName(name);
    if (stance == nullptr) return ids;
    access_.GetStanceObjects(doc, stance->m_id, members);
    for (int i = 0; i < members.Count(); ++i) ids.push_back(members[i]->ModelObjectId());
    return ids;
  }

  std::string path_;
};

TEST_F(ModelFileTest, ASavedModelOpensWithItsStancesRecordsLightsAndHiddenObjects) {
  const ZK_UUID box = AddBox();
  const ZK_UUID hidden = AddBox(TarsaObjectMode::hidden);
  const ZK_UUID light = AddLight();
  const auto saved = Placement(light);
  Save(L"Front", {box, hidden, light});
  Save(L"Side", {box});
  Move(light, ZK_Xform::Translation(1, 2, 3));
  SaveFile();

  CTarsaDoc* opened = OpenFile();
  ASSERT_NE(opened, nullptr);
  EXPECT_TRUE(TableOf(*opened) == Table());
  EXPECT_EQ(opened->LookupObject(hidden)->ObjectState(), CTarsaObject::hidden_object);
  ASSERT_EQ(opened->LightTable().LightCount(), 1);
  EXPECT_TRUE(access_.RestoreStance(*opened, TableOf(*opened).FindByName(L"Front")->m_id));
  const ZK_Light& restored = opened->LightTable()[0]->Light();
  EXPECT_NEAR(restored.m_location.z, saved[0].z, 1e-9);
  EXPECT_EQ(Members(*opened, L"Side"), std::vector<ZK_UUID>{box});
}

TEST_F(ModelFileTest, OpeningDropsEntriesOfUnknownStancesAndStancesNoObjectCarries) {
  const ZK_UUID box = AddBox();
  const ZK_UUID gone = Save(L"Gone", {box});
  Save(L"Front", {box});
  Save(L"Empty", {});
  access_.DeleteStance(*doc_, gone);  // the record keeps its entry for the deleted stance
  SaveFile();
  CTarsaDoc* opened = OpenFile();
  ASSERT_NE(opened, nullptr);
  ASSERT_EQ(TableOf(*opened).Count(), 1);
  EXPECT_EQ(TableOf(*opened).m_entries[0]->m_name, L"Front");
  const auto* record = CKorvoUserData::Of(opened->LookupObject(box));
  ASSERT_EQ(record->m_entries.GetSize(), 1);
}

TEST_F(ModelFileTest, ImportingTwiceGivesTwoSetsOfStancesEachCarriedByItsOwnObjects) {
  const ZK_UUID box = AddBox();
  Save(L"Pose", {box});
  Save(L"Unused by the file", {});
  SaveFile();
  Table().RemoveAll();
  Save(L"pose", {box});
  Save(L"Pose - Copy", {box});
  const INT_PTR own_entries = RecordOf(box)->m_entries.GetSize();

  ASSERT_TRUE(ImportFile());
  ASSERT_TRUE(ImportFile());
  std::vector<std::wstring> names;
  for (INT_PTR i = 0; i < Table().m_entries.GetSize(); ++i) {
    names.push_back(Table().m_entries[i]->m_name.Text());
  }
  EXPECT_EQ(names, (std::vector<std::wstring>{L"pose", L"Pose - Copy", L"Pose - Copy (2)",
                                              L"Pose - Copy (3)"}));
  const std::vector<ZK_UUID> first = Members(*doc_, L"Pose - Copy (2)");
  const std::vector<ZK_UUID> second = Members(*doc_, L"Pose - Copy (3)");
  ASSERT_EQ(first.size(), 1u);
  ASSERT_EQ(second.size(), 1u);
  EXPECT_NE(first[0], second[0]);
  EXPECT_NE(first[0], box);
  EXPECT_EQ(Members(*doc_, L"pose"), std::vector<ZK_UUID>{box});
  EXPECT_EQ(RecordOf(box)->m_entries.GetSize(), own_entries);  // the document's own are untouched

  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));  // the second import, stances and objects, is one step
  EXPECT_EQ(Table().Count(), 3);
}

TEST_F(ModelFileTest, AnAttachedModelStaysOutOfEveryVisit) {
  const ZK_UUID box = AddBox();
  Save(L"Front", {box});
  SaveFile();
  Table().RemoveAll();
  const int objects = ObjectCount(*doc_);
  ASSERT_TRUE(ImportFile(true));
  EXPECT_EQ(ObjectCount(*doc_), objects);
  EXPECT_EQ(Table().Count(), 0);  // its stances are carried by reference objects only
}

TEST_F(ModelFileTest, ANewerStanceBlockIsRefusedWithOneMessage) {
  Save(L"Front", {AddBox()});
  SaveFile();
  std::vector<unsigned char> bytes = FileBytes();
  // The block is the file's last part: version, two placeholders, one stance named Front.
  const size_t block = bytes.size() - (4 + 2 * (4 + 24) + 4 + 16 + 4 + 10);
  bytes[block] = 1;
  WriteBytes(bytes, bytes.size());
  CTarsaDoc* opened = OpenFile();
  ASSERT_NE(opened, nullptr);
  const auto shown = CTarsaStandIn::TakeMessageBoxes();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].m_text,
            L"This model was created with a more recent version of the Stance plug-in");
  EXPECT_EQ(shown[0].m_caption, L"Stance");
  EXPECT_EQ(shown[0].m_flags, 0x40u);
  EXPECT_EQ(CTarsaStandIn::CommandLine().TakeOutput(),
            L"Stance: This model was created with a more recent version of the Stance plug-in\n");
  EXPECT_EQ(TableOf(*opened).Count(), 0);
}

TEST_F(ModelFileTest, DamagedFilesNeverChangeTheOpenDocument) {
  Save(L"Front", {AddBox(), AddLight(), Add(new ZK_Polyline({{0, 0, 0}, {1, 1, 1}}))});
  SaveFile();
  const std::vector<unsigned char> bytes = FileBytes();
  const CKorvoDocData before(Table());
  const int objects = ObjectCount(*doc_);
  std::mt19937 random(20261122);
  for (size_t cut = 0; cut < bytes.size(); ++cut) {
    WriteBytes(bytes, cut);
    EXPECT_EQ(OpenFile(), nullptr) << cut;
    EXPECT_FALSE(ImportFile()) << cut;
  }
  for (int round = 0; round < 300; ++round) {
    std::vector<unsigned char> flipped = bytes;
    for (int flips = 0; flips < 3; ++flips) {
      flipped[random() % flipped.size()] ^= static_cast<unsigned char>(1 + random() % 255);
    }
    WriteBytes(flipped, flipped.size());
    OpenFile();
    // Some damage is only noticed as objects left out or a refused stance block.
    CTarsaStandIn::CommandLine().TakeOutput();
    CTarsaStandIn::TakeMessageBoxes();
  }
  EXPECT_TRUE(Table() == before);
  EXPECT_EQ(ObjectCount(*doc_), objects);
}

}  // namespace
