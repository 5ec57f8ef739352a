#include "data/document_registry.h"

#include <vector>

#include "data/undo_scope.h"
#include "operations/undo_record.h"
#include "testing/stance_document_test.h"

namespace {

TEST(DocumentRegistry, KeepsOneTablePerSerialNumberAcrossSharedBucketsAndBlocks) {
  CKorvoDocDataMap map;
  std::vector<CKorvoDocData*> tables;
  for (unsigned int serial = 1; serial <= 3000; ++serial) {
    tables.push_back(map.DocData(serial));  // 3000 keys in 256 buckets, three node blocks
    EXPECT_EQ(tables.back()->m_doc_serial_number, serial);
    EXPECT_EQ(tables.back()->Count(), 0);
  }
  tables[41]->Add(ZK_UuidFromString("9A8B7C6D-5E4F-4A3B-8C2D-1E0F9A8B7C6D"), L"Front");
  for (unsigned int serial = 1; serial <= 3000; ++serial) {
    EXPECT_EQ(map.DocData(serial), tables[serial - 1]);
  }
  EXPECT_EQ(map.DocData(42)->Count(), 1);
  EXPECT_EQ(map.Count(), 3000);
  map.RemoveAll();
  EXPECT_EQ(map.Count(), 0);
  EXPECT_EQ(map.DocData(42)->Count(), 0);
}

class StanceCleanupTest : public StanceDocumentTest {};

TEST_F(StanceCleanupTest, RemovesEachStanceNoObjectCarriesWithOneNotificationEach) {
  const ZK_UUID light = AddLight();
  const ZK_UUID hidden = AddBox(TarsaObjectMode::hidden);
  Save(L"Unused", {});
  const ZK_UUID lit = Save(L"Lit", {light});
  Save(L"Also unused", {});
  const ZK_UUID shadow = Save(L"Shadow", {hidden});
  Table().m_entries.Add(new CKorvoDocData::USER_DATA{ZK_nil_uuid, L"Nil"});
  TakeStanceChanges();

  Table().RemoveUnusedStances();
  ASSERT_EQ(Table().Count(), 3);
  EXPECT_EQ(Table().m_entries[0]->m_id, lit);
  EXPECT_EQ(Table().m_entries[1]->m_id, shadow);
  EXPECT_EQ(TakeStanceChanges(), 2);
}

TEST_F(StanceCleanupTest, AnEmptyTableOrAClosedDocumentChangesNothing) {
  Table().RemoveUnusedStances();
  Save(L"Unused", {});
  CKorvoDocData* table = &Table();
  CTarsaStandIn::CloseDocument(serial_);
  TakeStanceChanges();
  table->RemoveUnusedStances();
  EXPECT_EQ(table->Count(), 1);
  EXPECT_EQ(TakeStanceChanges(), 0);
}

TEST_F(StanceCleanupTest, RecordEntriesOfUnknownStancesAreDroppedInOrder) {
  const ZK_UUID a = ZK_UuidFromString("00000000-0000-4000-8000-00000000000A");
  const ZK_UUID b = ZK_UuidFromString("00000000-0000-4000-8000-00000000000B");
  const ZK_UUID c = ZK_UuidFromString("00000000-0000-4000-8000-00000000000C");
  CKorvoUserData record;
  for (const ZK_UUID& id : {a, b, c, b}) record.Add(id, ZK_Xform());
  Table().Add(b, L"Known");
  Table().Add(c, L"Also known");
  record.RemoveEntriesWithoutStance(*doc_);
  ASSERT_EQ(record.m_entries.GetSize(), 3);
  EXPECT_EQ(record.m_entries[0]->m_id, b);
  EXPECT_EQ(record.m_entries[1]->m_id, c);
  Table().RemoveAll();
  record.RemoveEntriesWithoutStance(*doc_);
  EXPECT_EQ(record.m_entries.GetSize(), 0);
}

TEST_F(StanceCleanupTest, AnUndoScopeRecordsOnlyAChangeOfAnOpenDocument) {
  const int steps = CTarsaStandIn::UndoStepCount(*doc_);
  Step([&] { CKorvoUndoScope scope(*doc_); });
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps);
  Step([&] {
    CKorvoUndoScope scope(*doc_);
    Table().Add(ZK_UuidFromString("5D6E7F80-91A2-4B3C-8D4E-5F60718293A4"), L"Front");
  });
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps + 1);

  CKorvoDocData* table = &Table();
  {
    CKorvoUndoScope scope(*doc_);
    table->RemoveAll();
    CTarsaStandIn::CloseDocument(serial_);
  }  // nothing to hand the snapshot to: it goes, with no leak
  EXPECT_EQ(table->Count(), 0);
}

TEST_F(StanceCleanupTest, AnUndoRecordWithoutSnapshotDoesNothing) {
  Save(L"Front", {});
  CKorvoUndoEventHandler empty(nullptr, serial_);
  empty.Undo(*doc_, L"", false, 0);
  EXPECT_EQ(Table().Count(), 1);
}

}  // namespace
