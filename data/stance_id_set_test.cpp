#include "data/stance_id_set.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

// Ids that differ in their last bytes only, or in their first: the hardest for a table that
// takes its slot from a few bits of the hash.
std::vector<ZK_UUID> NearlyEqualIds(int count, bool last_bytes) {
  std::vector<ZK_UUID> ids(static_cast<size_t>(count), ZK_nil_uuid);
  for (int i = 0; i < count; ++i) {
    ids[i].Data1 = last_bytes ? 0u : static_cast<unsigned int>(i);
    ids[i].Data4[6] = static_cast<unsigned char>(last_bytes ? i >> 8 : 0);
    ids[i].Data4[7] = static_cast<unsigned char>(last_bytes ? i : 0);
  }
  return ids;
}

// Ids inserted and erased at random, checked against a plain list: thousands of nearly equal ids
// in a table that grows well past what it expected, where an erase moves others back along their
// runs; and a few ids in a table of a few slots, checked after every step, where runs of full
// slots wrap around the table's end. None may be lost on the way.
TEST(StanceIdSet, AgreesWithAPlainListThroughRandomInsertsAndErases) {
  std::mt19937 random(11);
  std::vector<ZK_UUID> few = NearlyEqualIds(7, true);
  for (ZK_UUID& id : few) id.Data1 = static_cast<unsigned int>(random());
  for (const std::vector<ZK_UUID>& ids :
       {few, NearlyEqualIds(3000, true), NearlyEqualIds(3000, false)}) {
    CKorvoStanceIdSet set(ids.size() < 10 ? 0 : 10);
    std::vector<bool> in(ids.size(), false);
    for (int step = 0; step < 20000; ++step) {
      const size_t i = random() % ids.size();
      const bool insert = random() % 3 != 0;
      ASSERT_EQ(insert ? set.Insert(ids[i]) : set.Erase(ids[i]), insert != in[i]) << step;
      in[i] = insert;
      for (size_t j = 0; j < ids.size() && (ids.size() < 10 || step % 1000 == 0); ++j) {
        ASSERT_EQ(set.Contains(ids[j]), in[j]) << step;
      }
    }
    for (const ZK_UUID& id : ids) set.Erase(id);
    EXPECT_TRUE(set.IsEmpty());
  }
}

}  // namespace
