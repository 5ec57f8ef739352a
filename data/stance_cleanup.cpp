// The clean-up of stances and record entries that no longer meet: stances that no placement
// record refers to, and record entries whose stance the table does not know.

#include "data/placement_record.h"
#include "data/stance_id_set.h"
#include "data/stance_table.h"
#include "operations/every_object_iterator.h"
#include "operations/object_wrapper.h"

namespace {

// Drops the record's entries whose stance `known` does not hold, keeping the others in order, and
// strikes each kept entry's stance from `unreferenced`: every entry is read once, and a record
// that keeps every entry is not changed at all.
void KeepKnownEntries(CKorvoUserData& record, const CKorvoStanceIdSet& known,
                      CKorvoStanceIdSet& unreferenced) {
  record.KeepEntries([&known, &unreferenced](const CKorvoUserData::USER_DATA& entry) {
    if (!known.Contains(entry.m_id)) return false;
    if (!unreferenced.IsEmpty()) unreferenced.Erase(entry.m_id);
    return true;
  });
}

}  // namespace

void CKorvoDocData::RemoveUnusedStances(bool announce_each) {
  if (Count() == 0) return;
  CTarsaDoc* doc = CTarsaDoc::FromRuntimeSerialNumber(m_doc_serial_number);
  if (doc == nullptr) return;
  CKorvoStanceIdSet unreferenced = Ids();
  // Each record entry strikes its stance in constant time, so the visit costs the number of
  // entries, not entries times stances; it stops once every stance is known to be used.
  CKorvoEveryObjectIterator it(*doc);
  for (const CTarsaObject* object = it.First(); object && !unreferenced.IsEmpty();
       object = it.Next()) {
    const CKorvoUserData* record = CKorvoObjectWrapper(object).GetRecord();
    if (record == nullptr) continue;
    for (INT_PTR i = 0; i < record->m_entries.GetSize(); ++i) {
      unreferenced.Erase(record->m_entries[i]->m_id);
    }
  }
  RemoveStances(unreferenced, announce_each);
}

void CKorvoDocData::RemoveStaleEntriesAndUnusedStances(CTarsaDoc& doc) {
  const CKorvoStanceIdSet known = Ids();
  CKorvoStanceIdSet unreferenced = known;
  CKorvoEveryObjectIterator it(doc);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    if (CKorvoUserData* record = CKorvoUserData::Of(object)) {
      KeepKnownEntries(*record, known, unreferenced);
    }
  }
  if (Count() != 0) RemoveStances(unreferenced, true);
}

void CKorvoDocData::RemoveStances(const CKorvoStanceIdSet& unreferenced, bool announce_each) {
  const auto unused = [&unreferenced](const USER_DATA* entry) {
    return !ZK_UuidIsNil(entry->m_id) && unreferenced.Contains(entry->m_id);
  };
  const INT_PTR count = m_entries.GetSize();
  INT_PTR first = 0;
  while (first < count && !unused(m_entries[first])) ++first;
  if (first == count) return;
  // One pass keeps the used stances in order, so that removing many costs no more than one.
  BeforeChange(first);
  INT_PTR kept = first;
  int removed = 0;
  for (INT_PTR i = first; i < count; ++i) {
    USER_DATA* entry = m_entries[i];
    if (unused(entry)) {
      Free(entry);
      ++removed;
    } else {
      m_entries[kept++] = entry;
    }
  }
  m_entries.SetSize(kept);
  for (int i = 0; announce_each && i < removed; ++i) NotifyStancesChanged();
}
