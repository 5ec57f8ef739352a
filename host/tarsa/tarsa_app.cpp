#include "host/tarsa/tarsa_app.h"

#include <cstdarg>

#include "host/tarsa/standin/tarsa_command_line.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_message_box.h"
#include "host/tarsa/tarsa_stance_dynamic_access.h"

CTarsaApp::CTarsaApp() : m_command_line(new CTarsaCommandLine()) {}

CTarsaApp::~CTarsaApp() {
  // Watchers can outlive the application at program exit; they must not come back to it.
  for (CTarsaEventWatcher* watcher : m_watchers) watcher->m_registered = false;
}

CTarsaDoc* CTarsaApp::Document(unsigned int serial_number) const {
  const auto found = m_documents.find(serial_number);
  return found == m_documents.end() ? nullptr : found->second.get();
}

CTarsaDoc* CTarsaApp::ObsoleteActiveDoc() const { return Document(m_active_serial_number); }

void CTarsaApp::Print(const wchar_t* format, ...) {
  va_list args;
  va_start(args, format);
  const ZK_wString text = ZK_FormatVargs(format, args);
  va_end(args);
  m_command_line->Print(text.Text());
}

void CTarsaApp::RunScript(const wchar_t* macro, int echo) {
  m_command_line->RunScript(macro, echo);
}

bool CTarsaApp::OpenDockbarTab(const ZK_UUID& tab_id) { return m_open_tabs.insert(tab_id).second; }

bool CTarsaApp::CloseDockbarTab(const ZK_UUID& tab_id) { return m_open_tabs.erase(tab_id) != 0; }

int CTarsaApp::ShowMessageBox(const wchar_t* text, const wchar_t* caption, unsigned int flags) {
  m_message_boxes.push_back(ShownMessageBox{text ? text : L"", caption ? caption : L"", flags});
  Print(L"%s: %s\n", m_message_boxes.back().m_caption.c_str(),
        m_message_boxes.back().m_text.c_str());
  return TS_IDOK;
}

void CTarsaApp::OnStanceChanged(CTarsaDoc& doc) {
  m_stance_changes.push_back(doc.RuntimeSerialNumber());
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

// A plain pointer rather than a member of the application: a plug-in object withdraws its
// interface when it is destroyed, which may be after the application at program exit.
ITsStanceDynamicAccess* g_stance_dynamic_access = nullptr;

}  // namespace

void Stance_SetTarsaDynamicAccess(ITsStanceDynamicAccess* access) {
  g_stance_dynamic_access = access;
}

ITsStanceDynamicAccess* CTarsaStandIn::StanceDynamicAccess() { return g_stance_dynamic_access; }
