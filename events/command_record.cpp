#include "events/command_record.h"

#include <algorithm>

CKorvoCommandRecord::~CKorvoCommandRecord() { delete m_saved_record; }

void CKorvoCommandRecord::NoteDeletedObject(CTarsaDoc& doc, const CTarsaObject& object,
                                            CKorvoMatchCounts* counts) {
  const unsigned int serial = doc.RuntimeSerialNumber();
  const bool removal_asked =
      std::find(m_removal_docs.begin(), m_removal_docs.end(), serial) != m_removal_docs.end();
  // Once a deletion waits with a record and the removal is asked for, further deletions change
  // nothing: their records are not even looked at, so that deleting many stance objects in one
  // command costs little more than deleting them.
  if (removal_asked && m_added_ids.Count() == 0 && m_saved_record != nullptr) return;
  const CKorvoUserData* record = CKorvoUserData::Of(&object);
  if (record != nullptr && !removal_asked) m_removal_docs.push_back(serial);
  if (m_added_ids.Count() > 0) {
    if (record != nullptr) {
      m_saved_record = new CKorvoUserData(*record);
      HandOnRecord(doc, counts);
    }
    m_added_ids.Empty();
    return;
  }
  if (!m_deletion_waiting) {
    m_deletion_waiting = true;
    delete m_saved_record;
    m_saved_record = nullptr;
  }
  // Of several deletions waiting together, the first stance object's record is handed on.
  if (m_saved_record == nullptr && record != nullptr) m_saved_record = new CKorvoUserData(*record);
}

void CKorvoCommandRecord::NoteAddedObject(CTarsaObject& object) {
  if (!m_deletion_waiting) {
    m_added_ids.Append(object.ModelObjectId());
    return;
  }
  m_deletion_waiting = false;
  if (m_saved_record != nullptr && CKorvoUserData::Of(&object) == nullptr) {
    if (object.AttachGeometryUserData(m_saved_record)) m_saved_record = nullptr;
  }
  delete m_saved_record;
  m_saved_record = nullptr;
}

void CKorvoCommandRecord::HandOnRecord(CTarsaDoc& doc, CKorvoMatchCounts* counts) {
  if (m_added_ids.Count() == 0 || m_saved_record == nullptr) return;
  for (int i = 0; i < m_added_ids.Count(); ++i) {
    const CTarsaObject* object = doc.LookupObject(m_added_ids[i]);
    if (object == nullptr || CKorvoUserData::Of(object) != nullptr) continue;
    auto* copy = new CKorvoUserData(*m_saved_record);
    if (!object->AttachGeometryUserData(copy)) {
      delete copy;
    } else if (counts) {
      counts->Count(*object, 1);
    }
  }
  m_added_ids.Empty();
  delete m_saved_record;
  m_saved_record = nullptr;
}
