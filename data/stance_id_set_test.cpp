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
    if (last_bytes) {
      ids[i].Data4[7] = static_cast<unsigned char>(i);
      ids[i].Data4[6] = static_cast<unsigned char>(i >> 8);
    } else {
      ids[i].Data1 = static_cast<unsigned int>(i);
    }
  }
  return ids;
}

TEST(StanceIdSet, KeepsWhatWasInsertedAndNothingOfWhatWasErased) {
  for (bool last_bytes : {true, false}) {
    const std::vector<ZK_UUID> ids = NearlyEqualIds(3000, last_bytes);
    CKorvoStanceIdSet set(10);  // grows well past what it expected
    for (const ZK_UUID& id : ids) EXPECT_TRUE(set.Insert(id));
    EXPECT_FALSE(set.Insert(ids[7]));
    // Erasing every third id moves others back along their runs; none may be lost on the way.
    for (size_t i = 0; i < ids.size(); i += 3) EXPECT_TRUE(set.Erase(ids[i]));
    EXPECT_FALSE(set.Erase(ids[0]));
    for (size_t i = 0; i < ids.size(); ++i) EXPECT_EQ(set.Contains(ids[i]), i % 3 != 0) << i;
    EXPECT_TRUE(set.Insert(ids[0]));
    for (const ZK_UUID& id : ids) set.Erase(id);
    EXPECT_TRUE(set.IsEmpty());
  }
}

// A few ids in a table of a few slots, inserted and erased at random and checked against a plain
// list after every step: runs of full slots that wrap around the table's end lose no id.
TEST(StanceIdSet, AgreesWithAPlainListThroughRandomInsertsAndErases) {
  std::mt19937 random(11);
  std::vector<ZK_UUID> ids = NearlyEqualIds(7, true);
  for (ZK_UUID& id : ids) id.Data1 = static_cast<unsigned int>(random());
  CKorvoStanceIdSet set(0);
  std::vector<bool> in(ids.size(), false);
  for (int step = 0; step < 20000; ++step) {
    const size_t i = random() % ids.size();
    const bool insert = random() % 2 == 0;
    ASSERT_EQ(insert ? set.Insert(ids[i]) : set.Erase(ids[i]), insert != in[i]) << step;
    in[i] = insert;
    for (size_t j = 0; j < ids.size(); ++j) ASSERT_EQ(set.Contains(ids[j]), in[j]) << step;
  }
}

}  // namespace
