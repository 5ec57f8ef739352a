#include "events/command_record.h"

#include "operations/object_wrapper.h"

CKorvoCommandRecord::~CKorvoCommandRecord() { delete m_saved_record; }

void CKorvoCommandRecord::NoteDeletedObject(CTarsaDoc& doc, const CTarsaObject& object) {
  if (m_saved_record == nullptr) {
    if (const CKorvoUserData* record = CKorvoObjectWrapper(&object).GetRecord()) {
      m_saved_record = new CKorvoUserData(*record);
    }
  }
  HandOnRecord(doc);
}

void CKorvoCommandRecord::HandOnRecord(CTarsaDoc& doc) {
  if (m_added_ids.Count() == 0 || m_saved_record == nullptr) return;
  for (int i = 0; i < m_added_ids.Count(); ++i) {
    const CTarsaObject* object = doc.LookupObject(m_added_ids[i]);
    if (object == nullptr || CKorvoUserData::Of(object)) continue;
    auto* copy = new CKorvoUserData(*m_saved_record);
    if (!object->AttachGeometryUserData(copy)) delete copy;
  }
  m_added_ids.Empty();
  delete m_saved_record;
  m_saved_record = nullptr;
}
