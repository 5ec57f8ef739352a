#include "plugin/korvo_plugin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

#include <unistd.h>

#include "data/place_holder.h"
#include "events/event_watcher.h"
#include "testing/model_file_blocks.h"
#include "testing/stance_document_test.h"
#include "testing/stand_ins.h"

namespace {

class KorvoPlugInTest : public StanceDocumentTest {
 protected:
  void SetUp() override {
    StanceDocumentTest::SetUp();
    path_ = testing::TempDir() + "korvo_plugin_test_" + std::to_string(getpid()) + ".tsm";
  }
  void TearDown() override {
    std::remove(path_.c_str());
    std::remove((path_ + ".again").c_str());
    StanceDocumentTest::TearDown();
  }
  ModelFileBlocks::Bytes WriteBlock() {
    ZK_BinaryMemoryArchive out;
    EXPECT_TRUE(KorvoPlugIn().WriteDocument(*doc_, out, Options()));
    return out.Bytes();
  }
  // Reads a block into the document as if no file were being opened.
  bool ReadBlock(const ModelFileBlocks::Bytes& bytes) {
    ZK_BinaryMemoryArchive in(bytes);
    return KorvoPlugIn().ReadDocument(*doc_, in, CTarsaFileReadOptions(L"", false, false));
  }
  CTarsaFileWriteOptions Options() const { return CTarsaFileWriteOptions(serial_, L""); }
  void SaveFile(CTarsaDoc& doc, const std::string& path) {
    std::wstring error;
    ASSERT_TRUE(TsWriteModelFile(doc, path, error)) << ZK_wString(error).ToUtf8();
  }
  void ExpectNewerMessage() {
    const auto shown = CTarsaStandIn::TakeMessageBoxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].m_text,
              L"This model was created with a more recent version of the Stance plug-in");
    EXPECT_EQ(shown[0].m_caption, L"Stance");
    EXPECT_EQ(shown[0].m_flags, 0x40u);
    EXPECT_EQ(CTarsaStandIn::CommandLine().TakeOutput(),
              L"Stance: This model was created with a more recent version of the Stance plug-in\n");
  }

  std::string path_;
};

TEST_F(KorvoPlugInTest, TheBlockHoldsVersionZeroTwoPlaceHoldersAndTheStancesInOrder) {
  EXPECT_FALSE(KorvoPlugIn().ShouldWriteDocument(Options()));
  const ZK_UUID front = Save(L"Front", {AddBox()});
  const ZK_UUID side = Save(L"Side", {});
  EXPECT_TRUE(KorvoPlugIn().ShouldWriteDocument(Options()));
  ZK_BinaryMemoryArchive expected;
  expected.WriteInt(0);
  expected.WriteString(L"Place Holder");
  expected.WriteString(L"Place Holder");
  expected.WriteInt(2);
  expected.WriteUuid(front);
  expected.WriteString(L"Front");
  expected.WriteUuid(side);
  expected.WriteString(L"Side");
  EXPECT_EQ(WriteBlock(), expected.Bytes());

  // Read while no file is being opened: the table is replaced, and the clean-up is asked for.
  const ModelFileBlocks::Bytes block = WriteBlock();
  Table().RemoveAll();
  Save(L"Other", {});
  ModelFileBlocks::Bytes older = block;
  std::fill(older.begin(), older.begin() + 4, 0xFF);  // version -1
  ASSERT_TRUE(ReadBlock(older));
  EXPECT_EQ(Table().Count(), 2);
  EXPECT_EQ(Table().m_entries[1]->m_name, L"Side");
  EXPECT_TRUE(KorvoPlugIn().EventWatcher()->m_cleanup_requested);
}

TEST_F(KorvoPlugInTest, ANewerBlockIsRefusedWithOneMessageAndTheTableKept) {
  Save(L"Front", {AddBox()});
  ModelFileBlocks::Bytes block = WriteBlock();
  block[0] = 1;
  const CKorvoDocData before(Table());
  EXPECT_FALSE(ReadBlock(block));
  ExpectNewerMessage();
  EXPECT_TRUE(Table() == before);
}

// A model saved by a newer version of the plug-in, its stance block and its placement records
// both newer, opens with one message and is saved again exactly as it was.
TEST_F(KorvoPlugInTest, ANewerModelOpenedAndSavedKeepsItsStancesAndRecords) {
  const ZK_UUID box = AddBox();
  Save(L"Front", {box, AddLight()});
  SaveFile(*doc_, path_);
  ModelFileBlocks newer;
  ASSERT_TRUE(newer.Read(path_));
  for (auto& object : newer.objects) ModelFileBlocks::MakeStancesNewer(object);
  ASSERT_EQ(newer.plug_ins.size(), 1u);
  ModelFileBlocks::MakeStancesNewer(newer.plug_ins[0].bytes);
  newer.Write(path_);

  std::wstring error;
  CTarsaDoc* opened = CTarsaStandIn::OpenDocument(path_, error);
  ASSERT_NE(opened, nullptr) << ZK_wString(error).ToUtf8();
  ExpectNewerMessage();
  EXPECT_EQ(KorvoPlugIn().DocData(opened->RuntimeSerialNumber())->Count(), 0);
  EXPECT_EQ(CKorvoUserData::Of(opened->LookupObject(box)), nullptr);  // unread, yet kept
  SaveFile(*opened, path_ + ".again");
  ModelFileBlocks saved;
  ASSERT_TRUE(saved.Read(path_ + ".again"));
  EXPECT_EQ(saved.objects, newer.objects);
  EXPECT_EQ(saved.plug_ins, newer.plug_ins);
}

}  // namespace
