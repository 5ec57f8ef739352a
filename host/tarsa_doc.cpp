#include "host/tarsa_doc.h"

#include <utility>

CTarsaDoc::CTarsaDoc(unsigned int serial_number) : m_serial_number(serial_number) {}

CTarsaDoc::~CTarsaDoc() = default;

CTarsaDoc* CTarsaDoc::FromRuntimeSerialNumber(unsigned int serial_number) {
  return TarsaApp().Document(serial_number);
}

CTarsaDoc* CTarsaApp::NewDocument() {
  const unsigned int serial_number = m_next_serial_number++;
  auto& slot = m_documents[serial_number];
  slot.reset(new CTarsaDoc(serial_number));
  m_active_serial_number = serial_number;
  return slot.get();
}

bool CTarsaApp::CloseDocument(unsigned int serial_number) {
  if (m_documents.erase(serial_number) == 0) return false;
  if (m_active_serial_number == serial_number) {
    m_active_serial_number = m_documents.empty() ? 0 : m_documents.rbegin()->first;
  }
  return true;
}

CTarsaDoc* CTarsaApp::Document(unsigned int serial_number) const {
  const auto found = m_documents.find(serial_number);
  return found == m_documents.end() ? nullptr : found->second.get();
}

CTarsaDoc* CTarsaApp::ObsoleteActiveDoc() const { return Document(m_active_serial_number); }

void CTarsaApp::SetStanceChangedHandler(std::function<void(CTarsaDoc&)> handler) {
  m_stance_changed_handler = std::move(handler);
}

void CTarsaApp::OnStanceChanged(CTarsaDoc& doc) {
  if (m_stance_changed_handler) m_stance_changed_handler(doc);
}

CTarsaApp& TarsaApp() {
  static CTarsaApp app;
  return app;
}

void StanceChanged(CTarsaDoc& doc) { TarsaApp().OnStanceChanged(doc); }
