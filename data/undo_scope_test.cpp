#include "data/undo_scope.h"

#include <functional>
#include <string>

#include "testing/stance_document_test.h"

namespace {

using UndoScopeTest = StanceDocumentTest;

// A clean-up of the stances no object carries (hidden objects and lights carry theirs, and a nil
// id is never removed) tells the host of each stance removed, and undo puts every one back in
// place however many scopes took their snapshot at it. The host drops the oldest steps when their
// memory passes its limit, so a step counts the entries its snapshot holds, and no more: no step
// at all when nothing changed, all of a table put in place whole (the first change after it
// copies them), then one for each save. A document that is gone has nothing cleaned up, and a
// scope open when it went has nothing to record.
TEST_F(UndoScopeTest, AStepCountsTheEntriesItChangedAndUndoesACleanUpOnlyInAnOpenDocument) {
  const auto step_memory = [this](const std::function<void()>& change) {
    const size_t before = CTarsaStandIn::UndoMemory(*doc_);
    Step([&] {
      CKorvoUndoScope scope(*doc_);
      change();
    });
    return CTarsaStandIn::UndoMemory(*doc_) - before;
  };
  Save(L"Unused", {});
  Save(L"Lit", {AddLight()});
  Save(L"Also unused", {});
  Save(L"Shadow", {AddBox(TarsaObjectMode::hidden)});
  Table().m_entries.Add(new CKorvoDocData::USER_DATA{ZK_nil_uuid, L"Nil"});
  const CKorvoDocData before = Table();
  TakeStanceChanges();
  step_memory([&] {
    CKorvoUndoScope inner(*doc_);
    Table().RemoveUnusedStances();
  });
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Lit", L"Shadow", L"Nil"}));
  EXPECT_EQ(TakeStanceChanges(), 2);
  EXPECT_TRUE(CTarsaStandIn::Undo(*doc_));
  EXPECT_TRUE(Table() == before);
  EXPECT_TRUE(CTarsaStandIn::Redo(*doc_));
  const int steps = CTarsaStandIn::UndoStepCount(*doc_);
  EXPECT_EQ(step_memory([&] { Table().RemoveUnusedStances(); }), 0u);
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps);

  for (int i = 0; i < 1000; ++i) AddEntries({std::to_wstring(i).c_str()});
  const CKorvoDocData read(Table());
  Table() = read;
  const size_t whole = step_memory([&] { Table().RemoveAll(); });
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps + 1);
  Table() = read;
  EXPECT_EQ(step_memory([&] { AddEntries({L"After"}); }), whole);
  EXPECT_EQ(whole - step_memory([&] { AddEntries({L"Later"}); }),
            1002 * sizeof(CKorvoDocData::USER_DATA));

  CKorvoDocData* table = &Table();  // 1002 of its stances carried by no object
  TakeStanceChanges();
  {
    CKorvoUndoScope scope(*doc_);
    CTarsaStandIn::CloseDocument(serial_);
    table->RemoveUnusedStances();
    EXPECT_EQ(table->Count(), 1005);
    table->RemoveAll();
  }  // nothing to hand the snapshot to: it goes, with no leak
  EXPECT_EQ(TakeStanceChanges(), 0);
}

}  // namespace
