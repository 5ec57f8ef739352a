#include "operations/undo_record.h"

#include <utility>

#include "plugin/korvo_plugin.h"

CKorvoUndoEventHandler::CKorvoUndoEventHandler(std::shared_ptr<const CKorvoTableSnapshot> snapshot,
                                               unsigned int doc_serial_number)
    : m_snapshot(std::move(snapshot)), m_doc_serial_number(doc_serial_number) {}

unsigned int CKorvoUndoEventHandler::SizeOf() const {
  const size_t size = sizeof(*this) + (m_snapshot ? m_snapshot->OwnSize() : 0);
  return static_cast<unsigned int>(size);
}

void CKorvoUndoEventHandler::Undo(const CTarsaDoc&, const wchar_t*, bool, unsigned int) {
  if (m_snapshot == nullptr) return;
  CKorvoDocData& live = *KorvoPlugIn().DocData(m_doc_serial_number);
  std::shared_ptr<const CKorvoTableSnapshot> overwritten = live.Snapshot();
  live.Restore(std::move(m_snapshot));
  m_snapshot = std::move(overwritten);
}
