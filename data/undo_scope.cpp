#include "data/undo_scope.h"

#include <algorithm>
#include <utility>

#include "operations/undo_record.h"
#include "plugin/korvo_plugin.h"

CKorvoUndoScope::CKorvoUndoScope(CTarsaDoc& doc)
    : m_table(KorvoPlugIn().DocData(doc.RuntimeSerialNumber())),
      m_doc_serial_number(doc.RuntimeSerialNumber()) {
  m_table->m_open_scopes.push_back(this);
}

CKorvoUndoScope::~CKorvoUndoScope() {
  std::vector<CKorvoUndoScope*>& open = m_table->m_open_scopes;
  open.erase(std::remove(open.begin(), open.end(), this), open.end());
  if (m_snapshot == nullptr) return;
  CTarsaDoc* doc = CTarsaDoc::FromRuntimeSerialNumber(m_doc_serial_number);
  if (doc == nullptr || m_table->Equals(*m_snapshot)) return;
  doc->AddCustomUndoEvent(new CKorvoUndoEventHandler(std::move(m_snapshot), m_doc_serial_number));
}

void CKorvoUndoScope::TakeSnapshot(CKorvoDocData& table) {
  if (m_snapshot == nullptr) m_snapshot = table.Snapshot();
}
