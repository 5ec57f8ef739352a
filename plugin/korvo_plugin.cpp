#include "plugin/korvo_plugin.h"

#include "command/stance_command.h"
#include "events/event_watcher.h"

namespace {

const ZK_UUID kPlugInId = {
    0xFCEA57AE, 0x7C24, 0x4BC5, {0xA0, 0x67, 0x1D, 0xFF, 0xA6, 0x13, 0x98, 0x59}};

// The module's objects, made in this order when it loads and destroyed in reverse.
CKorvoPlugIn thePlugIn;
CCommandKorvo theStanceCommand;

}  // namespace

CKorvoPlugIn::CKorvoPlugIn() : m_event_watcher(new CKorvoEventWatcher()) {}

CKorvoPlugIn::~CKorvoPlugIn() {
  RemoveAllDocData();
  delete m_event_watcher;
  m_event_watcher = nullptr;
}

ZK_UUID CKorvoPlugIn::PlugInID() const { return kPlugInId; }

CKorvoDocData* CKorvoPlugIn::DocData(unsigned int doc_serial_number) {
  return m_doc_data_map.DocData(doc_serial_number);
}

void CKorvoPlugIn::RemoveAllDocData() { m_doc_data_map.RemoveAll(); }

CKorvoEventWatcher* CKorvoPlugIn::EventWatcher() {
  if (m_event_watcher == nullptr) m_event_watcher = new CKorvoEventWatcher();
  return m_event_watcher;
}

CKorvoPlugIn& KorvoPlugIn() { return thePlugIn; }
