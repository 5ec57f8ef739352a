#include "data/placement_record.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "host/zefkit/zk_light.h"
#include "testing/record_entries.h"
#include "testing/stand_ins.h"

namespace {

const ZK_Xform kMove = ZK_Xform::Translation(10, 0, 0);
const ZK_Xform kTurn = ZK_Xform::Rotation(0.5, {0, 0, 1}, {1, 2, 3});

std::vector<unsigned char> Written(const CKorvoUserData& record) {
  ZK_BinaryMemoryArchive out;
  EXPECT_TRUE(record.Write(out));
  return out.Bytes();
}

// The kernel finds the record's class by its registered uuid. Transforms accumulate newest on the
// left unless the base refuses them. A copy of the light carries a copy of the record, its last
// transform kept bit for bit (one that differs from the identity only in the sign of a zero is not
// taken for the identity); one read back from an archive keeps no last transform. A record copied
// from another stays attached where it was. A read refuses a newer version unread, and keeps the
// entries read in full of a cut archive.
TEST(PlacementRecordTest, CopiesAndReadsCarryTheRecordAndACutOrNewerArchiveReadsWhatItCan) {
  ZK_Light light;  // carrying a record, as the kernel holds it
  CKorvoUserData* record = new CKorvoUserData();
  light.AttachUserData(record);
  const ZK_UUID front = NewId();
  EXPECT_EQ(ZK_ClassId::ClassId(ZK_UuidFromString("4c865638-2d45-4F5D-9f10-618a0dbd3978")),
            CKorvoUserData::ClassIdOfRecord());
  EXPECT_EQ(ZK_UuidToString(record->m_application_uuid), L"FCEA57AE-7C24-4BC5-A067-1DFFA6139859");
  record->Add(front, kTurn);
  ASSERT_TRUE(light.Transform(kTurn));
  ASSERT_TRUE(light.Transform(kMove));
  ZK_Xform signed_zero;
  signed_zero[0][1] = -0.0;
  {
    ZK_TestFailUserDataTransform failing;
    EXPECT_FALSE(record->Transform(signed_zero));
  }
  EXPECT_EQ(record->m_accumulated_xform, kMove * kTurn);
  EXPECT_EQ(record->m_last_xform, kMove);
  ZK_BinaryMemoryArchive out;
  ASSERT_TRUE(out.WriteObject(light));
  ZK_BinaryMemoryArchive in(out.Bytes());
  ZK_Object* object = nullptr;
  ASSERT_EQ(in.ReadObject(object), 1);
  std::unique_ptr<ZK_Object> owned(object);
  const CKorvoUserData* read = CKorvoUserData::Of(object);
  EXPECT_EQ(Written(*read), Written(*record));
  EXPECT_TRUE(read->m_last_xform.IsIdentity());

  ASSERT_TRUE(light.Transform(signed_zero));
  ZK_Light copy(light);
  CKorvoUserData* copied = CKorvoUserData::Of(&copy);
  EXPECT_EQ(Written(*copied), Written(*record));
  EXPECT_EQ(std::memcmp(&copied->m_last_xform.Get(), &signed_zero, sizeof(ZK_Xform)), 0);
  copied->Add(NewId(), kMove);
  copied->Transform(kTurn);
  EXPECT_FALSE(record->CopyFrom(&light) || record->CopyFrom(nullptr));  // not a record, or none
  EXPECT_TRUE(record->HasEntry(front));
  EXPECT_TRUE(record->CopyFrom(copied));
  const std::vector<unsigned char> bytes = Written(*record);
  EXPECT_EQ(bytes, Written(*copied));
  EXPECT_EQ(record->Owner(), &light);  // still attached where it was

  for (int version : {1, -1}) {
    std::vector<unsigned char> versioned = bytes;  // integers are little-endian
    for (int i = 0; i < 4; ++i) versioned[i] = static_cast<unsigned char>(version >> (8 * i));
    ZK_BinaryMemoryArchive in(versioned);
    CKorvoUserData read;
    EXPECT_EQ(read.Read(in), version < 0) << version;
    EXPECT_EQ(EntriesOf(&read), version < 0 ? EntriesOf(record) : RecordEntries{}) << version;
    EXPECT_EQ(in.BytesLeft(), version < 0 ? 0 : bytes.size() - 4) << version;
  }
  // version, "Place Holder", accumulated transform, count; each entry a uuid and a transform.
  const size_t header = 4 + 4 + 24 + 128 + 4;
  for (size_t cut = 0; cut < bytes.size(); ++cut) {
    ZK_BinaryMemoryArchive limited(cut);  // a write that runs out of room says so
    EXPECT_FALSE(record->Write(limited)) << cut;
    ZK_BinaryMemoryArchive in(std::vector<unsigned char>(bytes.begin(), bytes.begin() + cut));
    CKorvoUserData read;
    EXPECT_FALSE(read.Read(in)) << cut;
    const size_t complete = cut < header ? 0 : (cut - header) / (16 + 128);
    EXPECT_EQ(static_cast<size_t>(read.m_entries.GetSize()), complete) << cut;
  }
  // A damaged count far beyond the bytes: the entries there are read, and the record does not try
  // to set aside room for the rest (which could not be had).
  std::vector<unsigned char> inflated = bytes;
  for (size_t i = 0; i < 4; ++i) inflated[header - 4 + i] = i < 3 ? 0xFF : 0x7F;
  ZK_BinaryMemoryArchive damaged(inflated);
  CKorvoUserData partial;
  EXPECT_FALSE(partial.Read(damaged));
  EXPECT_EQ(EntriesOf(&partial), EntriesOf(record));
}

// Copies share their entries until one of them changes. Through random saves (a copy given one
// more entry), adds, updates, removals, clean-ups, assignments and drops across a family of
// copies, every record keeps exactly its own entries, in order: an entry added to one record never
// shows in, or overwrites, another's. The host's undo keeps the object of every save as it was: the
// versions of its record that a run of saves leaves hold each entry about once, not once per
// version, and their sizes, as the host counts them, add up to that. A record alone on its entries
// counts them all, and one read from a file counts no room beyond them.
TEST(PlacementRecordTest, CopiesSharingEntriesStayIndependentAndARunOfSavesHoldsEachOnce) {
  std::vector<ZK_UUID> ids(10);
  for (ZK_UUID& id : ids) id = NewId();
  const auto known = [&ids](const ZK_UUID& id) {  // a clean-up knows the first half of the ids
    return std::find(ids.begin(), ids.begin() + 5, id) != ids.begin() + 5;
  };
  // Each record of the family, with the entries it should hold.
  std::vector<std::pair<std::unique_ptr<CKorvoUserData>, RecordEntries>> family(1);
  family[0].first = std::make_unique<CKorvoUserData>();
  std::mt19937 random(23);
  const auto pick = [&random](size_t n) {
    return std::uniform_int_distribution<size_t>(0, n - 1)(random);
  };
  for (int step = 0; step < 4000; ++step) {
    const size_t r = pick(family.size());
    CKorvoUserData& record = *family[r].first;
    RecordEntries& model = family[r].second;
    const ZK_UUID id = ids[pick(ids.size())];
    const ZK_Xform xform = ZK_Xform::Translation(step, 0, 0);
    const auto at = std::find_if(model.begin(), model.end(),
                                 [&id](const auto& entry) { return entry.first == id; });
    const bool has = at != model.end();
    switch (pick(7)) {
      case 0:
      case 1:  // a save
        if (family.size() == 24) break;
        family.emplace_back(std::make_unique<CKorvoUserData>(record), model);
        if (!has) family.back().first->Add(id, xform), family.back().second.emplace_back(id, xform);
        break;
      case 2:
        if (!has) record.Add(id, xform), model.emplace_back(id, xform);
        break;
      case 3: {
        ZK_Xform saved(0.0);
        ASSERT_EQ(record.GetXform(id, saved), has);
        ASSERT_EQ(saved, has ? at->second : ZK_Xform(0.0));
        ASSERT_EQ(record.SetXform(id, xform), has);
        if (has) at->second = xform;
        break;
      }
      case 4:
        ASSERT_EQ(record.Remove(id), has);
        if (has) model.erase(at);
        break;
      case 5:
        record.KeepEntries([&known](const CKorvoUserData::USER_DATA& e) { return known(e.m_id); });
        model.erase(std::remove_if(model.begin(), model.end(),
                                   [&known](const auto& e) { return !known(e.first); }),
                    model.end());
        break;
      default: {  // another record becomes a copy of this one, or this one goes
        const size_t other = pick(family.size());
        if (other != r || family.size() == 1) {
          *family[other].first = record;
          family[other].second = model;
        } else {
          family.erase(family.begin() + r);
        }
      }
    }
    for (const auto& [kept, expected] : family) ASSERT_EQ(EntriesOf(kept.get()), expected) << step;
  }

  const size_t saves = 1000;
  const size_t entry = sizeof(CKorvoUserData::USER_DATA);
  std::vector<std::unique_ptr<CKorvoUserData>> versions;
  versions.push_back(std::make_unique<CKorvoUserData>());
  for (size_t i = 0; i < saves; ++i) {
    versions.push_back(std::make_unique<CKorvoUserData>(*versions.back()));
    versions.back()->Add(NewId(), kTurn);
  }
  size_t held = 0;
  for (const auto& version : versions) held += version->SizeOf() - sizeof(CKorvoUserData);
  EXPECT_LT(held, 5 * saves * entry);
  const std::vector<unsigned char> bytes = Written(*versions.back());

  versions.erase(versions.begin(), versions.end() - 1);
  ZK_BinaryMemoryArchive in(bytes);
  CKorvoUserData read;
  ASSERT_TRUE(read.Read(in));
  for (const CKorvoUserData* record : {versions.back().get(), &read}) {
    EXPECT_GE(record->SizeOf() - sizeof(CKorvoUserData), saves * entry);
  }
  EXPECT_LT(read.SizeOf() - sizeof(CKorvoUserData), (saves + 1) * entry);
}

}  // namespace
