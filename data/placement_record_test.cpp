#include "data/placement_record.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "host/zefkit/zk_light.h"
#include "testing/stand_ins.h"

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

std::vector<unsigned char> Written(const CKorvoUserData& record) {
  ZK_BinaryMemoryArchive out;
  EXPECT_TRUE(record.Write(out));
  return out.Bytes();
}

CKorvoUserData* RecordOf(const ZK_Object& object) { return CKorvoUserData::Of(&object); }

// A light that carries a record, as the kernel holds it.
class PlacementRecordTest : public ::testing::Test {
 protected:
  PlacementRecordTest() : record_(new CKorvoUserData()) { light_.AttachUserData(record_); }

  ZK_Light light_;
  CKorvoUserData* record_;
  const ZK_UUID front_ = NewId();
  const ZK_UUID side_ = NewId();
};

TEST_F(PlacementRecordTest, TransformsAccumulateNewestOnTheLeftUnlessTheBaseRefusesThem) {
  ASSERT_TRUE(light_.Transform(kTurn));
  ASSERT_TRUE(light_.Transform(kMove));
  EXPECT_EQ(record_->m_accumulated_xform, kMove * kTurn);
  EXPECT_EQ(record_->m_last_xform, kMove);
  ZK_TestFailUserDataTransform failing;
  EXPECT_FALSE(record_->Transform(kTurn));
  EXPECT_EQ(record_->m_accumulated_xform, kMove * kTurn);
  EXPECT_EQ(record_->m_last_xform, kMove);
}

TEST_F(PlacementRecordTest, CopiesOfTheObjectOrFromAnotherRecordAreIndependent) {
  record_->Add(front_, kTurn);
  light_.Transform(kMove);
  ZK_Light copy(light_);
  CKorvoUserData* copied = RecordOf(copy);
  ASSERT_NE(copied, nullptr);
  EXPECT_EQ(Written(*copied), Written(*record_));
  EXPECT_EQ(copied->m_last_xform, kMove);
  copied->Remove(front_);
  EXPECT_TRUE(record_->HasEntry(front_));

  EXPECT_FALSE(record_->CopyFrom(&light_));  // not a record
  EXPECT_FALSE(record_->CopyFrom(nullptr));
  EXPECT_EQ(Ids(*record_), std::vector<ZK_UUID>{front_});
  copied->Add(side_, kMove);
  copied->Transform(kTurn);
  EXPECT_TRUE(record_->CopyFrom(copied));
  EXPECT_EQ(Written(*record_), Written(*copied));
  EXPECT_EQ(record_->Owner(), &light_);  // still attached where it was
  *record_ = *record_;
  EXPECT_EQ(Ids(*record_), std::vector<ZK_UUID>{side_});
}

// Entries live in the record's own storage, which moves as it grows: through many adds, removals
// in the middle and copies made at every size, each entry keeps its stance, transform and order.
TEST_F(PlacementRecordTest, EntriesKeepTheirOrderAndTransformsAsTheRecordGrowsShrinksAndIsCopied) {
  std::vector<ZK_UUID> expected;
  std::vector<double> shifts;  // entry i was saved at a move of shifts[i]
  for (int i = 0; i < 40; ++i) {
    expected.push_back(NewId());
    shifts.push_back(i);
    record_->Add(expected.back(), ZK_Xform::Translation(i, 0, 0));
    if (i % 3 == 2) {  // take out the entry before last
      EXPECT_TRUE(record_->Remove(expected[expected.size() - 2]));
      expected.erase(expected.end() - 2);
      shifts.erase(shifts.end() - 2);
    }
    CKorvoUserData copy(*record_);
    copy.Add(NewId(), kTurn);  // into the room a copy keeps for one more
    copy.Remove(expected.front());
    ASSERT_EQ(Ids(*record_), expected) << i;
  }
  const CKorvoUserData copy(*record_);
  EXPECT_EQ(Written(copy), Written(*record_));
  for (size_t e = 0; e < expected.size(); ++e) {
    ZK_Xform xform(0.0);
    ASSERT_TRUE(copy.GetXform(expected[e], xform));
    EXPECT_EQ(xform, ZK_Xform::Translation(shifts[e], 0, 0)) << e;
  }
}

// The kernel finds the record's class by its registered uuid; the last transform is not kept.
TEST_F(PlacementRecordTest, TheKernelRecreatesARecordWithItsLight) {
  EXPECT_EQ(ZK_ClassId::ClassId(ZK_UuidFromString("4c865638-2d45-4F5D-9f10-618a0dbd3978")),
            CKorvoUserData::ClassIdOfRecord());
  EXPECT_EQ(ZK_UuidToString(record_->m_application_uuid), L"FCEA57AE-7C24-4BC5-A067-1DFFA6139859");
  record_->Add(front_, kTurn);
  record_->Add(side_, kMove);
  light_.Transform(kMove);
  ZK_BinaryMemoryArchive out;
  ASSERT_TRUE(out.WriteObject(light_));
  ZK_BinaryMemoryArchive in(out.Bytes());
  ZK_Object* object = nullptr;
  ASSERT_EQ(in.ReadObject(object), 1);
  std::unique_ptr<ZK_Object> owned(object);
  const CKorvoUserData* read = RecordOf(*object);
  ASSERT_NE(read, nullptr);
  EXPECT_EQ(Written(*read), Written(*record_));
  EXPECT_TRUE(read->m_last_xform.IsIdentity());
}

TEST_F(PlacementRecordTest, ReadRefusesANewerVersionUnreadAndKeepsTheEntriesReadInFullOfACut) {
  record_->Add(front_, kTurn);
  record_->Add(side_, kMove);
  const std::vector<unsigned char> bytes = Written(*record_);
  for (int version : {1, -1}) {
    ZK_BinaryMemoryArchive prefix;
    prefix.WriteInt(version);
    std::vector<unsigned char> versioned = prefix.Bytes();
    versioned.insert(versioned.end(), bytes.begin() + 4, bytes.end());
    ZK_BinaryMemoryArchive in(versioned);
    CKorvoUserData read;
    EXPECT_EQ(read.Read(in), version < 0) << version;
    EXPECT_EQ(Ids(read), version < 0 ? Ids(*record_) : std::vector<ZK_UUID>{}) << version;
    EXPECT_EQ(in.BytesLeft(), version < 0 ? 0 : bytes.size() - 4) << version;
  }
  // version, "Place Holder", accumulated transform, count; each entry a uuid and a transform.
  const size_t header = 4 + 4 + 24 + 128 + 4;
  const size_t entry = 16 + 128;
  for (size_t cut = 0; cut < bytes.size(); ++cut) {
    ZK_BinaryMemoryArchive limited(cut);  // a write that runs out of room says so
    EXPECT_FALSE(record_->Write(limited)) << cut;
    ZK_BinaryMemoryArchive in(std::vector<unsigned char>(bytes.begin(), bytes.begin() + cut));
    CKorvoUserData read;
    EXPECT_FALSE(read.Read(in)) << cut;
    const size_t complete = cut < header ? 0 : (cut - header) / entry;
    EXPECT_EQ(static_cast<size_t>(read.m_entries.GetSize()), complete) << cut;
  }
  // A damaged count far beyond the bytes: the entries there are read, and the record does not try
  // to set aside room for the rest (which could not be had).
  std::vector<unsigned char> inflated = bytes;
  for (size_t i = 0; i < 4; ++i) inflated[header - 4 + i] = i < 3 ? 0xFF : 0x7F;
  ZK_BinaryMemoryArchive in(inflated);
  CKorvoUserData read;
  EXPECT_FALSE(read.Read(in));
  EXPECT_EQ(Ids(read), Ids(*record_));
}

}  // namespace
