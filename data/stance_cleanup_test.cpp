// The clean-up of stances that no object carries and of record entries whose stance is gone.
#include "data/undo_scope.h"
#include "testing/stance_document_test.h"

namespace {

using StanceCleanupTest = StanceDocumentTest;

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

// The scopes open around a clean-up keep the table as it was, however many of them take their
// snapshot at the clean-up; the table keeps the used stances, and undoing puts the rest back.
TEST_F(StanceCleanupTest, UndoingACleanUpInNestedScopesPutsEveryStanceBackInPlace) {
  const ZK_UUID box = AddBox();
  Save(L"Unused", {});
  const ZK_UUID kept = Save(L"Kept", {box});
  Save(L"Also unused", {});
  const CKorvoDocData before = Table();
  Step([&] {
    CKorvoUndoScope outer(*doc_);
    CKorvoUndoScope inner(*doc_);
    Table().RemoveUnusedStances();
  });
  ASSERT_EQ(Table().Count(), 1);
  EXPECT_EQ(Table().m_entries[0]->m_id, kept);
  EXPECT_EQ(Table().m_entries[0]->m_name, ZK_wString(L"Kept"));
  EXPECT_TRUE(CTarsaStandIn::Undo(*doc_));
  EXPECT_TRUE(Table() == before);
  EXPECT_TRUE(CTarsaStandIn::Redo(*doc_));
  EXPECT_EQ(Table().Count(), 1);
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

}  // namespace
