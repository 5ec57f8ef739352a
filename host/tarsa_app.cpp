#include "host/tarsa_app.h"

#include "host/tarsa_message_box.h"
#include "host/ts_stance_dynamic_access.h"

#include <cstdarg>
#include <utility>

CTarsaApp::~CTarsaApp() {
  // Watchers can outlive the application at program exit; they must not come back to it.
  for (CTarsaEventWatcher* watcher : m_watchers) watcher->m_registered = false;
}

CTarsaDoc* CTarsaApp::NewDocument() {
  const unsigned int serial_number = m_next_serial_number++;
  auto& slot = m_documents[serial_number];
  slot.reset(new CTarsaDoc(*this, serial_number));
  CTarsaDoc* doc = slot.get();
  NotifyEventWatchers([doc](CTarsaEventWatcher& w) { w.OnNewDocument(*doc); });
  SetActiveDocument(serial_number);
  return doc;
}

bool CTarsaApp::CloseDocument(unsigned int serial_number) {
  CTarsaDoc* doc = Document(serial_number);
  if (doc == nullptr) return false;
  NotifyEventWatchers([doc](CTarsaEventWatcher& w) { w.OnCloseDocument(*doc); });
  m_documents.erase(serial_number);
  if (m_active_serial_number == serial_number) {
    m_active_serial_number = 0;
    CTarsaDoc* newest = m_documents.empty() ? nullptr : m_documents.rbegin()->second.get();
    if (newest) m_active_serial_number = newest->RuntimeSerialNumber();
    NotifyEventWatchers([newest](CTarsaEventWatcher& w) { w.OnActiveDocumentChanged(newest); });
  }
  return true;
}

CTarsaDoc* CTarsaApp::Document(unsigned int serial_number) const {
  const auto found = m_documents.find(serial_number);
  return found == m_documents.end() ? nullptr : found->second.get();
}

CTarsaDoc* CTarsaApp::ObsoleteActiveDoc() const { return Document(m_active_serial_number); }

bool CTarsaApp::SetActiveDocument(unsigned int serial_number) {
  CTarsaDoc* doc = Document(serial_number);
  if (doc == nullptr) return false;
  if (m_active_serial_number != serial_number) {
    m_active_serial_number = serial_number;
    NotifyEventWatchers([doc](CTarsaEventWatcher& w) { w.OnActiveDocumentChanged(doc); });
  }
  return true;
}

void CTarsaApp::Print(const wchar_t* format, ...) {
  va_list args;
  va_start(args, format);
  const ZK_wString text = ZK_FormatVargs(format, args);
  va_end(args);
  m_command_line.Print(text.Text());
}

bool CTarsaApp::OpenDockbarTab(const ZK_UUID& tab_id) { return m_open_tabs.insert(tab_id).second; }

bool CTarsaApp::CloseDockbarTab(const ZK_UUID& tab_id) { return m_open_tabs.erase(tab_id) != 0; }

void CTarsaApp::AddPlugIn(CTarsaPlugIn& plug_in) {
  if (std::find(m_plug_ins.begin(), m_plug_ins.end(), &plug_in) == m_plug_ins.end()) {
    m_plug_ins.push_back(&plug_in);
  }
}

void CTarsaApp::RemovePlugIn(CTarsaPlugIn& plug_in) {
  m_plug_ins.erase(std::remove(m_plug_ins.begin(), m_plug_ins.end(), &plug_in), m_plug_ins.end());
}

int CTarsaApp::ShowMessageBox(const wchar_t* text, const wchar_t* caption, unsigned int flags) {
  m_message_boxes.push_back(ShownMessageBox{text ? text : L"", caption ? caption : L"", flags});
  Print(L"%s: %s\n", m_message_boxes.back().m_caption.c_str(),
        m_message_boxes.back().m_text.c_str());
  return TS_IDOK;
}

std::vector<CTarsaApp::ShownMessageBox> CTarsaApp::TakeMessageBoxes() {
  std::vector<ShownMessageBox> shown;
  shown.swap(m_message_boxes);
  return shown;
}

void CTarsaApp::SetStanceChangedHandler(std::function<void(CTarsaDoc&)> handler) {
  m_stance_changed_handler = std::move(handler);
}

void CTarsaApp::OnStanceChanged(CTarsaDoc& doc) {
  if (m_stance_changed_handler) m_stance_changed_handler(doc);
}

bool CTarsaApp::RegisterEventWatcher(CTarsaEventWatcher& watcher) {
  if (watcher.m_registered) return false;
  m_watchers.push_back(&watcher);
  watcher.m_registered = true;
  return true;
}

bool CTarsaApp::UnRegisterEventWatcher(CTarsaEventWatcher& watcher) {
  const auto found = std::find(m_watchers.begin(), m_watchers.end(), &watcher);
  if (found == m_watchers.end()) return false;
  m_watchers.erase(found);
  watcher.m_registered = false;
  return true;
}

CTarsaApp& TarsaApp() {
  static CTarsaApp app;
  return app;
}

void StanceChanged(CTarsaDoc& doc) { TarsaApp().OnStanceChanged(doc); }

int TarsaMessageBox(const wchar_t* text, const wchar_t* caption, unsigned int flags) {
  return TarsaApp().ShowMessageBox(text, caption, flags);
}

namespace {

ITsStanceDynamicAccess* g_stance_dynamic_access = nullptr;

}  // namespace

void Stance_SetTarsaDynamicAccess(ITsStanceDynamicAccess* access) {
  g_stance_dynamic_access = access;
}

ITsStanceDynamicAccess* Stance_TarsaDynamicAccess() { return g_stance_dynamic_access; }
