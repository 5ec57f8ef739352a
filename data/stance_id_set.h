// CKorvoStanceIdSet: a set of stance ids for a pass over every record entry of a document, made
// and dropped by the operation that makes the pass (the clean-ups and the merge of an import).
// The pass looks ids up many times more often than the set changes, and, in the clean-up that
// strikes each id an entry refers to, most look-ups miss once the set has shrunk:
// a byte per slot says whether the slot is full, so that a miss reads one byte of a table small
// enough to stay in the processor's nearest cache, after a multiply, and never divides or walks
// through separately allocated nodes. An erased id leaves no trace behind.
#pragma once

#include <cstddef>
#include <vector>

#include "host/zefkit/zk_uuid.h"

class CKorvoStanceIdSet {
 public:
  // An empty set with room for `expected` ids before it grows.
  explicit CKorvoStanceIdSet(int expected);

  // True when `id` was not in the set and now is; false when it was there already.
  bool Insert(const ZK_UUID& id);
  // True when `id` was in the set and is now removed; false when it was not there.
  bool Erase(const ZK_UUID& id);
  bool Contains(const ZK_UUID& id) const { return m_full[Find(id)] != 0; }
  bool IsEmpty() const { return m_count == 0; }

 private:
  // The slot where `id`'s probe starts: the hash's high bits, since its last multiplication mixes
  // every bit of the id into them while its low bits miss the id's last bytes.
  size_t Home(const ZK_UUID& id) const {
    return static_cast<size_t>(static_cast<unsigned long long>(ZK_UuidHash()(id)) >> m_shift);
  }
  // The slot that holds `id`, or the empty slot where it would go.
  size_t Find(const ZK_UUID& id) const {
    const size_t mask = m_full.size() - 1;
    size_t at = Home(id);
    while (m_full[at] != 0 && !(m_ids[at] == id)) at = (at + 1) & mask;
    return at;
  }
  // Rebuilds the table with `capacity` slots, a power of two.
  void Rehash(size_t capacity);

  std::vector<unsigned char> m_full;  // 1 for a slot that holds an id
  std::vector<ZK_UUID> m_ids;
  size_t m_count = 0;
  int m_shift = 64;  // 64 less the table's power of two
};
