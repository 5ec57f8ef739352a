#include "data/table_snapshot.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "testing/stand_ins.h"

namespace {

using Snapshot = std::shared_ptr<const CKorvoTableSnapshot>;

// Snapshots taken between random changes of a table (adds, removals and renames anywhere, tables
// put back from older snapshots as undo does, the table emptied) each keep exactly the table they
// were taken of, however many later snapshots share their entries, and whichever are let go. A
// run of snapshots each one stance longer than the one before holds one entry apiece, and a run
// far longer than any call stack is let go without one.
TEST(TableSnapshotTest, EverySnapshotKeepsItsTableAndARunOfSavesHoldsEachStanceOnce) {
  std::mt19937 random(20261125);
  CKorvoDocData table;
  std::vector<std::pair<Snapshot, CKorvoDocData>> taken;
  int next_name = 0;
  const auto pick = [&random](int size) {
    return std::uniform_int_distribution<int>(0, size - 1)(random);
  };
  for (int step = 0; step < 3000; ++step) {
    const int count = table.Count();
    const int action = pick(100);
    if (action < 45 || count == 0) {
      ASSERT_EQ(table.Add(NewId(), std::to_wstring(next_name++).c_str()), 1);
    } else if (action < 65) {
      ASSERT_TRUE(table.Remove(table.m_entries[pick(count)]->m_id));
    } else if (action < 85) {
      const ZK_UUID id = table.m_entries[pick(count)]->m_id;
      ASSERT_EQ(table.Rename(id, (L"r" + std::to_wstring(next_name++)).c_str()), 1);
    } else if (action < 97 && !taken.empty()) {
      table.Restore(taken[static_cast<size_t>(pick(static_cast<int>(taken.size())))].first);
    } else if (action < 98) {
      table.RemoveAll();
    } else if (!taken.empty()) {
      taken.erase(taken.begin() + pick(static_cast<int>(taken.size())));
    }
    if (pick(3) == 0) taken.emplace_back(table.Snapshot(), table);
    for (const auto& kept : taken) {
      ASSERT_EQ(table.Equals(*kept.first), table == kept.second) << "step " << step;
    }
  }
  for (const auto& kept : taken) {
    CKorvoDocData restored;
    restored.Restore(kept.first);
    EXPECT_TRUE(restored == kept.second);
  }

  table.RemoveAll();
  const Snapshot empty = table.Snapshot();
  for (int i = 0; i < 2000; ++i) {
    table.Add(NewId(), std::to_wstring(i).c_str());
    ASSERT_LE(table.Snapshot()->OwnSize(),
              empty->OwnSize() + sizeof(CKorvoTableSnapshot::USER_DATA));
  }
  Snapshot run = table.Snapshot();
  for (int i = 0; i < 300000; ++i) {
    run = CKorvoTableSnapshot::Make(run, run->Count(), {CKorvoTableSnapshot::USER_DATA{}});
  }
  EXPECT_EQ(run->Count(), 302000);
  table.RemoveAll();
  run.reset();
}

}  // namespace
