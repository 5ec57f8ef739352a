#include "data/stance_id_set.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// Ids that differ in their last bytes only, or in their first: the hardest for a table that
// takes its slot from a few bits of the hash.
std::vector<ZK_UUID> NearlyEqualIds(int count, bool last_bytes) {
  std::vector<ZK_UUID> ids;
  for (int i = 0; i < count; ++i) {
    ZK_UUID id = ZK_nil_uuid;
    if (last_bytes) {
      id.Data4[7] = static_cast<unsigned char>(i);
      id.Data4[6] = static_cast<unsigned char>(i >> 8);
    } else {
      id.Data1 = static_cast<unsigned int>(i);
    }
    ids.push_back(id);
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
    EXPECT_FALSE(set.Contains(ids[1]));
  }
}

}  // namespace
