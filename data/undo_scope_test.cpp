#include "data/undo_scope.h"

#include "testing/stance_document_test.h"

namespace {

using UndoScopeTest = StanceDocumentTest;

TEST_F(UndoScopeTest, RecordsOnlyAChangeOfAnOpenDocument) {
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

// The host drops the oldest steps when their memory passes its limit, so a step that changes the
// table counts at least the entries of the snapshot it keeps.
TEST_F(UndoScopeTest, AStepCountsTheMemoryOfItsSnapshot) {
  const auto step_memory = [this](int stances) {
    Table().RemoveAll();
    for (int i = 0; i < stances; ++i) Save(std::to_wstring(i).c_str(), {});
    const size_t before = CTarsaStandIn::UndoMemory(*doc_);
    Step([&] {
      CKorvoUndoScope scope(*doc_);
      Table().RemoveAll();
    });
    return CTarsaStandIn::UndoMemory(*doc_) - before;
  };
  const size_t one = step_memory(1);
  EXPECT_GE(step_memory(101) - one, 100 * (sizeof(CKorvoDocData::USER_DATA) + sizeof(void*)));
}

}  // namespace
