#include "drift/match_counts.h"

#include "drift/stance_drift.h"
#include "operations/every_object_iterator.h"
#include "operations/object_wrapper.h"

CKorvoMatchCounts::CKorvoMatchCounts(CTarsaDoc& doc) {
  CKorvoEveryObjectIterator it(doc);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) Count(*object, 1);
}

bool CKorvoMatchCounts::Matches(const ZK_UUID& stance_id) const {
  const auto found = m_counts.find(stance_id);
  return found != m_counts.end() && found->second.members > 0 && found->second.away == 0;
}

void CKorvoMatchCounts::Count(const CTarsaObject& object, int sign) {
  // The visit takes active objects of every state: only a reference's objects stay outside it.
  if (object.IsReference()) return;
  const CKorvoUserData* record = CKorvoObjectWrapper(&object).GetRecord();
  if (record == nullptr) return;
  for (INT_PTR e = 0; e < record->m_entries.GetCount(); ++e) {
    const CKorvoUserData::USER_DATA& entry = *record->m_entries[e];
    Counts& counts = m_counts[entry.m_id];
    counts.members += sign;
    if (MemberState(object, entry.m_xform, record->m_accumulated_xform) ==
        KorvoMemberState::moved) {
      counts.away += sign;
    }
    if (counts.members == 0) m_counts.erase(entry.m_id);
  }
}
