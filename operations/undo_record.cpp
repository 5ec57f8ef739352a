#include "operations/undo_record.h"

#include "plugin/korvo_plugin.h"

CKorvoUndoEventHandler::CKorvoUndoEventHandler(CKorvoDocData* snapshot,
                                               unsigned int doc_serial_number)
    : m_snapshot(snapshot), m_doc_serial_number(doc_serial_number) {}

CKorvoUndoEventHandler::~CKorvoUndoEventHandler() { delete m_snapshot; }

unsigned int CKorvoUndoEventHandler::SizeOf() const {
  size_t size = sizeof(*this);
  if (m_snapshot) {
    size += sizeof(CKorvoDocData) + static_cast<size_t>(m_snapshot->Count()) *
                                        (sizeof(CKorvoDocData::USER_DATA) + sizeof(void*));
  }
  return static_cast<unsigned int>(size);
}

void CKorvoUndoEventHandler::Undo(const CTarsaDoc&, const wchar_t*, bool, unsigned int) {
  if (m_snapshot == nullptr) return;
  CKorvoDocData& live = *KorvoPlugIn().DocData(m_doc_serial_number);
  const CKorvoDocData overwritten(live);
  live = *m_snapshot;
  *m_snapshot = overwritten;
}
