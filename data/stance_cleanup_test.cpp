// The clean-up of stances that no object carries.
#include "data/undo_scope.h"
#include "testing/stance_document_test.h"

namespace {

using StanceCleanupTest = StanceDocumentTest;

// Hidden objects and lights carry their stances, and a nil id is never removed; each stance
// removed is told to the host. However many scopes take their snapshot at the clean-up, undo puts
// every stance back in place. A document that is gone has nothing cleaned up, and a scope open
// when it went has nothing to record.
TEST_F(StanceCleanupTest, RemovesEachStanceNoObjectCarriesUndoablyAndOnlyInAnOpenDocument) {
  const ZK_UUID light = AddLight();
  const ZK_UUID hidden = AddBox(TarsaObjectMode::hidden);
  Save(L"Unused", {});
  Save(L"Lit", {light});
  Save(L"Also unused", {});
  Save(L"Shadow", {hidden});
  Table().m_entries.Add(new CKorvoDocData::USER_DATA{ZK_nil_uuid, L"Nil"});
  const CKorvoDocData before = Table();
  TakeStanceChanges();
  Step([&] {
    CKorvoUndoScope outer(*doc_);
    CKorvoUndoScope inner(*doc_);
    Table().RemoveUnusedStances();
  });
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Lit", L"Shadow", L"Nil"}));
  EXPECT_EQ(TakeStanceChanges(), 2);
  EXPECT_TRUE(CTarsaStandIn::Undo(*doc_));
  EXPECT_TRUE(Table() == before);
  EXPECT_TRUE(CTarsaStandIn::Redo(*doc_));
  EXPECT_EQ(Table().Count(), 3);

  AddEntries({L"Unused"});
  CKorvoDocData* table = &Table();
  TakeStanceChanges();
  {
    CKorvoUndoScope scope(*doc_);
    CTarsaStandIn::CloseDocument(serial_);
    table->RemoveUnusedStances();
    EXPECT_EQ(table->Count(), 4);
    table->RemoveAll();
  }  // nothing to hand the snapshot to: it goes, with no leak
  EXPECT_EQ(TakeStanceChanges(), 0);
}

}  // namespace
