#include "data/undo_scope.h"

#include <algorithm>

#include "operations/undo_record.h"
#include "plugin/korvo_plugin.h"

CKorvoUndoScope::CKorvoUndoScope(CTarsaDoc& doc)
    : m_table(KorvoPlugIn().DocData(doc.RuntimeSerialNumber())),
      m_snapshot(nullptr),
      m_doc_serial_number(doc.RuntimeSerialNumber()) {
  m_table->m_open_scopes.push_back(this);
}

CKorvoUndoScope::~CKorvoUndoScope() {
  std::vector<CKorvoUndoScope*>& open = m_table->m_open_scopes;
  open.erase(std::remove(open.begin(), open.end(), this), open.end());
  if (m_snapshot == nullptr) return;
  CTarsaDoc* doc = CTarsaDoc::FromRuntimeSerialNumber(m_doc_serial_number);
  if (*m_table == *m_snapshot || doc == nullptr) {
    delete m_snapshot;
    return;
  }
  doc->AddCustomUndoEvent(new CKorvoUndoEventHandler(m_snapshot, m_doc_serial_number));
}

void CKorvoUndoScope::TakeSnapshot(const CKorvoDocData& table) {
  if (m_snapshot == nullptr) m_snapshot = new CKorvoDocData(table);
}
