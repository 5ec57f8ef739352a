#include "data/undo_scope.h"

#include <functional>
#include <string>

#include "testing/stance_document_test.h"

namespace {

using UndoScopeTest = StanceDocumentTest;

// The host drops the oldest steps when their memory passes its limit, so a step counts the
// entries its snapshot holds, and no more: no step at all when nothing changed, all of a table
// put in place whole (the first change after it copies them), then one for each save.
TEST_F(UndoScopeTest, AStepCountsTheEntriesItChangedAndNoChangeRecordsNone) {
  const auto step_memory = [this](const std::function<void()>& change) {
    const size_t before = CTarsaStandIn::UndoMemory(*doc_);
    Step([&] {
      CKorvoUndoScope scope(*doc_);
      change();
    });
    return CTarsaStandIn::UndoMemory(*doc_) - before;
  };
  const int steps = CTarsaStandIn::UndoStepCount(*doc_);
  EXPECT_EQ(step_memory([] {}), 0u);
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps);
  for (int i = 0; i < 1000; ++i) AddEntries({std::to_wstring(i).c_str()});
  const CKorvoDocData read(Table());
  Table() = read;
  const size_t whole = step_memory([&] { Table().RemoveAll(); });
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps + 1);
  Table() = read;
  EXPECT_EQ(step_memory([&] { AddEntries({L"After"}); }), whole);
  EXPECT_EQ(whole - step_memory([&] { AddEntries({L"Later"}); }),
            999 * sizeof(CKorvoDocData::USER_DATA));
}

}  // namespace
