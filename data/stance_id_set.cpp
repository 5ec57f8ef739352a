#include "data/stance_id_set.h"

namespace {

// The smallest power of two that keeps `ids` at most half the table, so that probes stay short.
size_t CapacityFor(size_t ids) {
  size_t capacity = 8;
  while (capacity < 2 * ids) capacity *= 2;
  return capacity;
}

}  // namespace

CKorvoStanceIdSet::CKorvoStanceIdSet(int expected) {
  Rehash(CapacityFor(expected > 0 ? static_cast<size_t>(expected) : 0));
}

bool CKorvoStanceIdSet::Insert(const ZK_UUID& id) {
  if (2 * (m_count + 1) > m_full.size()) Rehash(CapacityFor(m_count + 1));
  const size_t at = Find(id);
  if (m_full[at] != 0) return false;
  m_full[at] = 1;
  m_ids[at] = id;
  ++m_count;
  return true;
}

bool CKorvoStanceIdSet::Erase(const ZK_UUID& id) {
  const size_t mask = m_full.size() - 1;
  size_t hole = Find(id);
  if (m_full[hole] == 0) return false;
  m_full[hole] = 0;
  --m_count;
  // Ids further along the run move back into the hole unless that would put them before their
  // home slot, so that every probe still ends at the first empty slot.
  for (size_t at = (hole + 1) & mask; m_full[at] != 0; at = (at + 1) & mask) {
    const size_t home = Home(m_ids[at]);
    const bool stays = hole <= at ? (hole < home && home <= at) : (hole < home || home <= at);
    if (stays) continue;
    m_full[hole] = 1;
    m_ids[hole] = m_ids[at];
    m_full[at] = 0;
    hole = at;
  }
  return true;
}

void CKorvoStanceIdSet::Rehash(size_t capacity) {
  std::vector<unsigned char> full(capacity, 0);
  std::vector<ZK_UUID> ids(capacity);
  full.swap(m_full);
  ids.swap(m_ids);
  m_shift = 64;
  for (size_t c = capacity; c > 1; c /= 2) --m_shift;
  for (size_t i = 0; i < full.size(); ++i) {
    if (full[i] == 0) continue;
    const size_t at = Find(ids[i]);
    m_full[at] = 1;
    m_ids[at] = ids[i];
  }
}
