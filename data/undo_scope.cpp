#include "data/undo_scope.h"

#include "operations/undo_record.h"
#include "plugin/korvo_plugin.h"

CKorvoUndoScope::CKorvoUndoScope(CTarsaDoc& doc)
    : m_snapshot(nullptr), m_doc_serial_number(doc.RuntimeSerialNumber()) {
  m_snapshot = new CKorvoDocData(*KorvoPlugIn().DocData(m_doc_serial_number));
}

CKorvoUndoScope::~CKorvoUndoScope() {
  const CKorvoDocData* current = KorvoPlugIn().DocData(m_doc_serial_number);
  CTarsaDoc* doc = CTarsaDoc::FromRuntimeSerialNumber(m_doc_serial_number);
  if (*current == *m_snapshot || doc == nullptr) {
    delete m_snapshot;
    return;
  }
  doc->AddCustomUndoEvent(new CKorvoUndoEventHandler(m_snapshot, m_doc_serial_number));
}
