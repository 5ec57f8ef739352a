#include "data/placement_record.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "host/zk_light.h"
#include "host/zk_testing.h"
#include "plugin/korvo_plugin.h"

namespace {

const ZK_Xform kMove = ZK_Xform::Translation(10, 0, 0);
const ZK_Xform kTurn = ZK_Xform::Rotation(0.5, {0, 0, 1}, {1, 2, 3});

ZK_UUID NewId() {
  ZK_UUID id;
  EXPECT_TRUE(ZK_CreateUuid(id));
  return id;
}

std::vector<ZK_UUID> Ids(const CKorvoUserData& record) {
  std::vector<ZK_UUID> ids;
  for (INT_PTR i = 0; i < record.m_entries.GetSize(); ++i) ids.push_back(record.m_entries[i]->m_id);
  return ids;
}

// A light that carries a record, as the kernel holds it.
class PlacementRecordTest : public ::testing::Test {
 protected:
  PlacementRecordTest() : record_(new CKorvoUserData()) { light_.AttachUserData(record_); }

  CKorvoUserData* RecordOf(const ZK_Object& object) {
    return CKorvoUserData::Cast(object.GetUserData(CKorvoUserData::m_userdata_id));
  }

  ZK_Light light_;
  CKorvoUserData* record_;
  const ZK_UUID front_ = NewId();
  const ZK_UUID side_ = NewId();
};

TEST_F(PlacementRecordTest, ANewRecordIsCopiedWithItsObjectAndNamesThePlugIn) {
  EXPECT_EQ(record_->m_userdata_copycount, 1);
  EXPECT_EQ(record_->m_application_uuid, KorvoPlugIn().PlugInID());
  EXPECT_EQ(ZK_UuidToString(record_->m_application_uuid), L"FCEA57AE-7C24-4BC5-A067-1DFFA6139859");
  ZK_wString description;
  EXPECT_TRUE(record_->GetDescription(description));
  EXPECT_EQ(description, L"Korvo User Data");
}

TEST_F(PlacementRecordTest, TransformsOfTheGeometryAccumulateNewestOnTheLeft) {
  ASSERT_TRUE(light_.Transform(kTurn));
  ASSERT_TRUE(light_.Transform(kMove));
  EXPECT_EQ(record_->m_accumulated_xform, kMove * kTurn);
  EXPECT_EQ(record_->m_last_xform, kMove);
}

TEST_F(PlacementRecordTest, ATransformTheBaseRefusesChangesNothing) {
  record_->Transform(kTurn);
  ZK_TestFailUserDataTransform failing;
  EXPECT_FALSE(record_->Transform(kMove));
  EXPECT_EQ(record_->m_accumulated_xform, kTurn);
  EXPECT_EQ(record_->m_last_xform, kTurn);
}

TEST_F(PlacementRecordTest, EntriesAreFoundByIdAndKeepTheirOrder) {
  const ZK_UUID top = NewId();
  record_->Add(front_, kMove);
  record_->Add(side_, kTurn);
  record_->Add(top, ZK_Xform());
  EXPECT_FALSE(record_->SetXform(NewId(), kMove));
  EXPECT_TRUE(record_->SetXform(side_, kMove));
  ZK_Xform xform;
  EXPECT_TRUE(record_->GetXform(side_, xform));
  EXPECT_EQ(xform, kMove);
  EXPECT_TRUE(record_->Remove(side_));
  EXPECT_FALSE(record_->HasEntry(side_));
  EXPECT_EQ(Ids(*record_), (std::vector<ZK_UUID>{front_, top}));
}

TEST_F(PlacementRecordTest, ACopyOfTheObjectCarriesAnIndependentCopyOfTheRecord) {
  record_->Add(front_, kTurn);
  light_.Transform(kMove);
  ZK_Light copy(light_);
  CKorvoUserData* copied = RecordOf(copy);
  ASSERT_NE(copied, nullptr);
  ASSERT_NE(copied, record_);
  EXPECT_EQ(copied->m_accumulated_xform, kMove);
  EXPECT_EQ(copied->m_last_xform, kMove);
  EXPECT_EQ(Ids(*copied), Ids(*record_));
  copied->Remove(front_);
  EXPECT_TRUE(record_->HasEntry(front_));
}

TEST_F(PlacementRecordTest, CopyFromTakesOnlyPlacementRecords) {
  record_->Add(front_, kTurn);
  ZK_Light not_a_record;
  EXPECT_FALSE(record_->CopyFrom(&not_a_record));
  EXPECT_FALSE(record_->CopyFrom(nullptr));
  EXPECT_EQ(Ids(*record_), std::vector<ZK_UUID>{front_});

  CKorvoUserData source;
  source.Add(side_, kMove);
  source.Transform(kTurn);
  EXPECT_TRUE(record_->CopyFrom(&source));
  EXPECT_EQ(Ids(*record_), std::vector<ZK_UUID>{side_});
  EXPECT_EQ(record_->m_accumulated_xform, kTurn);
  EXPECT_EQ(record_->Owner(), &light_);  // still attached where it was

  *record_ = *record_;
  EXPECT_EQ(Ids(*record_), std::vector<ZK_UUID>{side_});
}

class PlacementRecordArchiveTest : public PlacementRecordTest {
 protected:
  std::vector<unsigned char> WrittenRecord() {
    ZK_BinaryMemoryArchive out;
    EXPECT_TRUE(record_->Write(out));
    return out.Bytes();
  }
  std::vector<unsigned char> Versioned(int version) {
    std::vector<unsigned char> bytes = WrittenRecord();
    ZK_BinaryMemoryArchive out;
    out.WriteInt(version);
    std::copy(out.Bytes().begin(), out.Bytes().end(), bytes.begin());
    return bytes;
  }
};

TEST_F(PlacementRecordArchiveTest, TheKernelRecreatesARecordWithItsLight) {
  record_->Add(front_, kTurn);
  record_->Add(side_, kMove);
  light_.Transform(kMove);
  ZK_BinaryMemoryArchive out;
  ASSERT_TRUE(out.WriteObject(light_));

  ZK_BinaryMemoryArchive in(out.Bytes());
  ZK_Object* object = nullptr;
  ASSERT_EQ(in.ReadObject(object), 1);
  std::unique_ptr<ZK_Object> owned(object);
  CKorvoUserData* read = RecordOf(*object);
  ASSERT_NE(read, nullptr);
  EXPECT_EQ(read->m_accumulated_xform, kMove);
  EXPECT_TRUE(read->m_last_xform.IsIdentity());
  EXPECT_EQ(Ids(*read), (std::vector<ZK_UUID>{front_, side_}));
  ZK_Xform xform;
  EXPECT_TRUE(read->GetXform(front_, xform));
  EXPECT_EQ(xform, kTurn);
}

TEST_F(PlacementRecordArchiveTest, TheClassIsRegisteredUnderItsOwnUuid) {
  const ZK_ClassId* id =
      ZK_ClassId::ClassId(ZK_UuidFromString("4c865638-2d45-4F5D-9f10-618a0dbd3978"));
  ASSERT_EQ(id, CKorvoUserData::ClassIdOfRecord());
  EXPECT_STREQ(id->ClassName(), "CKorvoUserData");
  EXPECT_STREQ(id->BaseClassName(), "ZK_UserData");
  std::unique_ptr<ZK_Object> made(id->Create());
  EXPECT_NE(ZK_UserData::Cast(made.get()), nullptr);
  EXPECT_EQ(CKorvoUserData::Cast(made.get())->m_userdata_uuid, CKorvoUserData::m_userdata_id);
}

TEST_F(PlacementRecordArchiveTest, ANewerVersionIsRefusedAndAnOlderOneRead) {
  record_->Add(front_, kTurn);
  ZK_BinaryMemoryArchive newer(Versioned(1));
  CKorvoUserData refused;
  EXPECT_FALSE(refused.Read(newer));
  EXPECT_EQ(refused.m_entries.GetSize(), 0);
  EXPECT_EQ(newer.BytesLeft(), WrittenRecord().size() - 4);

  ZK_BinaryMemoryArchive older(Versioned(-1));
  CKorvoUserData read;
  EXPECT_TRUE(read.Read(older));
  EXPECT_EQ(Ids(read), std::vector<ZK_UUID>{front_});
}

TEST_F(PlacementRecordArchiveTest, EveryTruncationFailsAndKeepsTheEntriesReadInFull) {
  record_->Add(front_, kTurn);
  record_->Add(side_, kMove);
  const std::vector<unsigned char> bytes = WrittenRecord();
  // version, "Place Holder", accumulated transform, count; each entry a uuid and a transform.
  const size_t header = 4 + 4 + 24 + 128 + 4;
  const size_t entry = 16 + 128;
  for (size_t cut = 0; cut < bytes.size(); ++cut) {
    ZK_BinaryMemoryArchive in(std::vector<unsigned char>(bytes.begin(), bytes.begin() + cut));
    CKorvoUserData read;
    EXPECT_FALSE(read.Read(in)) << cut;
    const size_t complete = cut < header ? 0 : (cut - header) / entry;
    EXPECT_EQ(static_cast<size_t>(read.m_entries.GetSize()), complete) << cut;
  }
}

}  // namespace
