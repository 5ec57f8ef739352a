// A placement record's entries as (stance, saved placement) pairs, for tests that compare a
// record's entries whole and in order.
#pragma once

#include <utility>
#include <vector>

#include "data/placement_record.h"

using RecordEntries = std::vector<std::pair<ZK_UUID, ZK_Xform>>;

// The record's entries in its order; none for no record.
inline RecordEntries EntriesOf(const CKorvoUserData* record) {
  RecordEntries entries;
  for (INT_PTR e = 0; record && e < record->m_entries.GetSize(); ++e) {
    entries.emplace_back(record->m_entries[e]->m_id, record->m_entries[e]->m_xform);
  }
  return entries;
}
