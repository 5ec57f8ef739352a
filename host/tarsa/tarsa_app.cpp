#include "host/tarsa/tarsa_app.h"

#include <cstdarg>

#include "host/tarsa/standin/tarsa_command_line.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_dpi.h"
#include "host/tarsa/tarsa_message_box.h"
#include "host/tarsa/tarsa_plugin.h"
#include "host/tarsa/tarsa_stance_dynamic_access.h"

CTarsaApp::CTarsaApp() : m_command_line(new CTarsaCommandLine()) {}

CTarsaApp::~CTarsaApp() {
  // Watchers can outlive the application at program exit; they must not come back to it.
  for (CTarsaEventWatcher* watcher : m_watchers) watcher->m_registered = false;
  ClosePanels();
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
  m_scripts.emplace_back(macro ? macro : L"", echo);
  m_command_line->RunScript(macro, echo);
}

const CTarsaAppearanceSettings& CTarsaAppSettings::AppearanceSettings(bool defaults) const {
  return defaults ? m_default_appearance : m_appearance;
}

bool CTarsaApp::RegisterPanelClass(const CRuntimeClass* runtime_class, int template_id,
                                   AFX_MODULE_STATE* module_state) {
  if (runtime_class == nullptr || runtime_class->m_pfnCreateObject == nullptr ||
      !runtime_class->IsDerivedFrom(&CTarsaTabbedDockBarDialog::kRuntimeClass)) {
    return false;
  }
  for (const PanelClass& known : m_panel_classes) {
    if (known.runtime_class == runtime_class) return false;
  }
  m_panel_classes.push_back(
      PanelClass{runtime_class, template_id, module_state, false, {}, m_loading_plug_in});
  return true;
}

CTarsaTabbedDockBarDialog* CTarsaApp::NewPanel(const ZK_UUID& tab_id,
                                               const PanelClass** panel_class) {
  // A class's tab id is learnt from its first object; until then an object is made to ask.
  for (PanelClass& known : m_panel_classes) {
    if (known.tab_id_known && known.tab_id != tab_id) continue;
    AFX_MANAGE_STATE(known.module_state);
    std::unique_ptr<CObject> object(known.runtime_class->CreateObject());
    auto* panel = dynamic_cast<CTarsaTabbedDockBarDialog*>(object.get());
    if (panel == nullptr) continue;
    known.tab_id = panel->TabId();
    known.tab_id_known = true;
    if (known.tab_id != tab_id) continue;
    object.release();
    *panel_class = &known;
    return panel;
  }
  return nullptr;
}

bool CTarsaApp::OpenDockbarTab(const ZK_UUID& tab_id) {
  if (IsTabVisible(tab_id)) return true;
  const PanelClass* panel_class = nullptr;
  std::unique_ptr<CTarsaTabbedDockBarDialog> panel(NewPanel(tab_id, &panel_class));
  if (panel) {
    AFX_MANAGE_STATE(panel_class->module_state);
    if (!panel->Create(AfxGetResourceHandle(), panel_class->template_id, MainWnd(),
                       CTarsaWindowsDpi::Dpi().Value())) {
      return false;
    }
    m_panels[tab_id] = std::move(panel);
  }
  m_open_tabs.insert(tab_id);
  return true;
}

bool CTarsaApp::CloseDockbarTab(const ZK_UUID& tab) {
  const ZK_UUID tab_id = tab;  // `tab` may be the key of the panel that goes
  m_panels.erase(tab_id);
  return m_open_tabs.erase(tab_id) != 0;
}

void CTarsaApp::ClosePanels() {
  while (!m_panels.empty()) CloseDockbarTab(m_panels.begin()->first);
  m_open_tabs.clear();
}

void CTarsaApp::ForgetPanelClasses(const CTarsaPlugIn* owner) {
  for (auto c = m_panel_classes.begin(); c != m_panel_classes.end();) {
    if (c->owner != owner) {
      ++c;
      continue;
    }
    if (c->tab_id_known) CloseDockbarTab(c->tab_id);
    c = m_panel_classes.erase(c);
  }
}

void CTarsaApp::RunDueWork(bool idle) {
  std::vector<CTarsaTabbedDockBarDialog*> panels;
  for (const auto& entry : m_panels) panels.push_back(entry.second.get());
  for (CTarsaTabbedDockBarDialog* panel : panels) panel->RunDueWork(idle, m_clock_ms);
}

CWnd* CTarsaApp::MainWnd() {
  if (m_main_window.GetSafeHwnd() == nullptr) {
    m_main_window.Create(L"TarsaMainWindow", WS_VISIBLE, RECT{0, 0, 1280, 800}, nullptr, 0);
  }
  return &m_main_window;
}

CTarsaView* CTarsaApp::ActiveView() {
  if (ObsoleteActiveDoc() == nullptr) return nullptr;
  if (m_view.GetSafeHwnd() == nullptr) {
    m_view.Create(L"TarsaView", WS_CHILD | WS_VISIBLE, RECT{0, 0, 1000, 700}, MainWnd(), 0);
  }
  return &m_view;
}

int CTarsaApp::ShowMessageBox(const wchar_t* text, const wchar_t* caption, unsigned int flags) {
  m_message_boxes.push_back(ShownMessageBox{text ? text : L"", caption ? caption : L"", flags});
  Print(L"%s: %s\n", m_message_boxes.back().m_caption.c_str(),
        m_message_boxes.back().m_text.c_str());
  return TS_IDOK;
}

void CTarsaApp::OnStanceChanged(CTarsaDoc& doc) {
  m_stance_changes.push_back(doc.RuntimeSerialNumber());
  TellOfReplacedPlugInData(doc);
  if (m_stance_changed_handler) m_stance_changed_handler(doc);
}

void CTarsaApp::TellOfReplacedPlugInData(CTarsaDoc& doc) {
  for (CTarsaDoc::PlugInData& kept : doc.m_kept_plug_in_data) {
    if (kept.m_replacement_told) continue;
    const CTarsaFileWriteOptions options(doc.RuntimeSerialNumber(), kept.m_file);
    for (CTarsaPlugIn* plug_in : m_plug_ins) {
      if (plug_in->PlugInID() != kept.m_plug_in_id || !plug_in->ShouldWriteDocument(options)) {
        continue;
      }
      kept.m_replacement_told = true;
      Print(
          L"The stances in %s that could not be read will be replaced by the present ones when "
          L"the model is saved.\n",
          kept.m_file.c_str());
    }
  }
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
