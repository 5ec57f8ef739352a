#include "host/tarsa/standin/tarsa_standin.h"

#include <algorithm>
#include <exception>

#include <memory>

#include "host/tarsa/standin/tarsa_plugin_loader.h"
#include "host/tarsa/tarsa_dockbar.h"
#include "host/tarsa/tarsa_dpi.h"
#include "host/tarsa/tarsa_named_object_panel.h"
#include "host/zefkit/zk_string.h"

CTarsaDoc* CTarsaStandIn::NewDocument() {
  CTarsaApp& app = TarsaApp();
  const unsigned int serial_number = app.m_next_serial_number++;
  auto& slot = app.m_documents[serial_number];
  slot.reset(new CTarsaDoc(app, serial_number));
  CTarsaDoc* doc = slot.get();
  NotifyEventWatchers([doc](CTarsaEventWatcher& w) { w.OnNewDocument(*doc); });
  SetActiveDocument(serial_number);
  return doc;
}

bool CTarsaStandIn::CloseDocument(unsigned int serial_number) {
  CTarsaApp& app = TarsaApp();
  CTarsaDoc* doc = app.Document(serial_number);
  if (doc == nullptr) return false;
  NotifyEventWatchers([doc](CTarsaEventWatcher& w) { w.OnCloseDocument(*doc); });
  app.m_documents.erase(serial_number);
  if (app.m_active_serial_number == serial_number) {
    app.m_active_serial_number = 0;
    CTarsaDoc* newest = app.m_documents.empty() ? nullptr : app.m_documents.rbegin()->second.get();
    if (newest) app.m_active_serial_number = newest->RuntimeSerialNumber();
    NotifyEventWatchers([newest](CTarsaEventWatcher& w) { w.OnActiveDocumentChanged(newest); });
  }
  return true;
}

bool CTarsaStandIn::SetActiveDocument(unsigned int serial_number) {
  CTarsaApp& app = TarsaApp();
  CTarsaDoc* doc = app.Document(serial_number);
  if (doc == nullptr) return false;
  if (app.m_active_serial_number != serial_number) {
    app.m_active_serial_number = serial_number;
    NotifyEventWatchers([doc](CTarsaEventWatcher& w) { w.OnActiveDocumentChanged(doc); });
  }
  return true;
}

std::vector<CTarsaDoc*> CTarsaStandIn::Documents() {
  std::vector<CTarsaDoc*> documents;
  for (const auto& entry : TarsaApp().m_documents) documents.push_back(entry.second.get());
  return documents;
}

bool CTarsaStandIn::Undo(CTarsaDoc& doc) { return doc.Undo(); }

bool CTarsaStandIn::Redo(CTarsaDoc& doc) { return doc.Redo(); }

int CTarsaStandIn::UndoStepCount(const CTarsaDoc& doc) {
  return static_cast<int>(doc.m_undo_steps.size());
}

int CTarsaStandIn::RedoStepCount(const CTarsaDoc& doc) {
  return static_cast<int>(doc.m_redo_steps.size());
}

void CTarsaStandIn::ClearUndo(CTarsaDoc& doc) { doc.ClearUndo(); }

bool CTarsaStandIn::LoadPlugIn(CTarsaPlugIn& plug_in, std::wstring* reason) {
  std::vector<CTarsaPlugIn*>& plug_ins = TarsaApp().m_plug_ins;
  if (std::find(plug_ins.begin(), plug_ins.end(), &plug_in) != plug_ins.end()) return true;
  TarsaApp().m_loading_plug_in = &plug_in;
  // A plug-in's fault must not end the host: a throw is a refusal like any other.
  std::wstring why;
  bool loaded = false;
  try {
    loaded = plug_in.OnLoadPlugIn();
    const wchar_t* text = loaded ? nullptr : plug_in.OnLoadPlugInErrorString();
    if (text) why = text;
  } catch (const std::exception& error) {
    why =
        L"its OnLoadPlugIn threw an exception (" + ZK_wString::FromUtf8(error.what()).Text() + L")";
  } catch (...) {
    why = L"its OnLoadPlugIn threw an exception";
  }
  TarsaApp().m_loading_plug_in = nullptr;
  if (!loaded) {
    TarsaApp().ForgetPanelClasses(&plug_in);
    if (reason) *reason = why;
    return false;
  }
  plug_ins.push_back(&plug_in);
  return true;
}

bool CTarsaStandIn::UnloadPlugIn(CTarsaPlugIn& plug_in) {
  std::vector<CTarsaPlugIn*>& plug_ins = TarsaApp().m_plug_ins;
  const auto found = std::find(plug_ins.begin(), plug_ins.end(), &plug_in);
  if (found == plug_ins.end()) return false;
  plug_ins.erase(found);
  TarsaApp().ForgetPanelClasses(&plug_in);
  plug_in.OnUnloadPlugIn();
  return true;
}

const std::vector<CTarsaPlugIn*>& CTarsaStandIn::PlugIns() { return TarsaApp().m_plug_ins; }

size_t CTarsaStandIn::EventWatcherCount() { return TarsaApp().m_watchers.size(); }

CTarsaCommandLine& CTarsaStandIn::CommandLine() { return *TarsaApp().m_command_line; }

std::vector<std::pair<std::wstring, int>> CTarsaStandIn::TakeScripts() {
  std::vector<std::pair<std::wstring, int>> scripts;
  scripts.swap(TarsaApp().m_scripts);
  return scripts;
}

std::vector<CTarsaStandIn::ShownMessageBox> CTarsaStandIn::TakeMessageBoxes() {
  std::vector<ShownMessageBox> shown;
  shown.swap(TarsaApp().m_message_boxes);
  return shown;
}

std::vector<unsigned int> CTarsaStandIn::TakeStanceChanges() {
  std::vector<unsigned int> changes;
  changes.swap(TarsaApp().m_stance_changes);
  return changes;
}

void CTarsaStandIn::SetStanceChangedHandler(std::function<void(CTarsaDoc&)> handler) {
  TarsaApp().m_stance_changed_handler = std::move(handler);
}

int CTarsaStandIn::RegenCount(const CTarsaDoc& doc) { return doc.m_regen_count; }

int CTarsaStandIn::RedrawCount(const CTarsaDoc& doc) { return doc.m_redraw_count; }

CTsNamedDocObjectManagerDlg* CTarsaStandIn::Panel(const ZK_UUID& tab_id) {
  const auto& panels = TarsaApp().m_panels;
  const auto found = panels.find(tab_id);
  return found == panels.end() ? nullptr
                               : dynamic_cast<CTsNamedDocObjectManagerDlg*>(found->second.get());
}

std::vector<CTsNamedDocObjectManagerDlg*> CTarsaStandIn::Panels() {
  std::vector<CTsNamedDocObjectManagerDlg*> panels;
  for (const auto& entry : TarsaApp().m_panels) {
    auto* panel = dynamic_cast<CTsNamedDocObjectManagerDlg*>(entry.second.get());
    if (panel != nullptr) panels.push_back(panel);
  }
  return panels;
}

void CTarsaStandIn::OpenEveryPanel() {
  std::vector<ZK_UUID> tabs;
  for (const CTarsaApp::PanelClass& known : TarsaApp().m_panel_classes) {
    if (known.tab_id_known) {
      tabs.push_back(known.tab_id);
      continue;
    }
    // A class's tab id is known once an object of it was made: one is made to ask.
    AFX_MANAGE_STATE(known.module_state);
    std::unique_ptr<CObject> object(known.runtime_class->CreateObject());
    if (auto* panel = dynamic_cast<CTarsaTabbedDockBarDialog*>(object.get())) {
      tabs.push_back(panel->TabId());
    }
  }
  for (const ZK_UUID& tab : tabs) TarsaUiOpenDockbarTab(tab);
}

namespace {

// Delivers a user's action to a panel: now, or once the waiting command has been cancelled, when
// the panel of that tab (if it is still open) receives it.
void Deliver(CTsNamedDocObjectManagerDlg& panel,
             std::function<void(CTsNamedDocObjectManagerDlg&)> action) {
  const ZK_UUID tab_id = panel.TabId();
  CTarsaStandIn::CommandLine().RunWhenNoCommand([tab_id, action] {
    if (CTsNamedDocObjectManagerDlg* open = CTarsaStandIn::Panel(tab_id)) action(*open);
  });
}

}  // namespace

bool CTarsaStandIn::Click(CTsNamedDocObjectManagerDlg& panel, int control_id) {
  const HWND control = panel.GetDlgItem(control_id);
  if (control == nullptr || !IsWindowEnabled(control) || !panel.IsWindowEnabled()) return false;
  Deliver(panel,
          [control_id](CTsNamedDocObjectManagerDlg& p) { CTsDialogEvents::Click(p, control_id); });
  return true;
}

void CTarsaStandIn::ContextMenu(CTsNamedDocObjectManagerDlg& panel, POINT point) {
  Deliver(panel, [point](CTsNamedDocObjectManagerDlg& p) {
    CTsDialogEvents::ContextMenu(p, &p.List(), point);
  });
}

void CTarsaStandIn::DoubleClick(CTsNamedDocObjectManagerDlg& panel, int item) {
  if (item < 0 || item >= panel.List().GetItemCount()) return;
  SelectItems(panel, {item});
  Deliver(panel, [](CTsNamedDocObjectManagerDlg& p) { p.OnDefaultAction(); });
}

void CTarsaStandIn::SelectItems(CTsNamedDocObjectManagerDlg& panel, const std::vector<int>& items) {
  CListCtrl& list = panel.List();
  for (int i = 0; i < list.GetItemCount(); ++i) {
    const bool selected = std::find(items.begin(), items.end(), i) != items.end();
    list.SetItemState(i, selected ? LVIS_SELECTED : 0, LVIS_SELECTED);
  }
  panel.EnableDisableControls();
}

void CTarsaStandIn::Resize(CTsNamedDocObjectManagerDlg& panel, int width, int height) {
  const RECT r = panel.WindowRect();
  panel.MoveWindow(r.left, r.top, width, height);
  panel.LayoutControls();
}

CTsScriptedAnswers& CTarsaStandIn::Answers() { return TsScriptedAnswers(); }

void CTarsaStandIn::AdvanceClock(unsigned int milliseconds) {
  TarsaApp().m_clock_ms += milliseconds;
  TarsaApp().RunDueWork(false);
}

void CTarsaStandIn::RunIdleWork() { TarsaApp().RunDueWork(true); }

bool CTarsaStandIn::RebuildPending(const CTsNamedDocObjectManagerDlg& panel) {
  return panel.m_rebuild_pending;
}

unsigned int CTarsaStandIn::RebuildDelay(const CTsNamedDocObjectManagerDlg& panel) {
  return panel.m_rebuild_delay;
}

int CTarsaStandIn::RebuildRequestCount(const CTsNamedDocObjectManagerDlg& panel) {
  return panel.m_rebuild_requests;
}

int CTarsaStandIn::RebuildCount(const CTsNamedDocObjectManagerDlg& panel) {
  return panel.m_rebuilds;
}

void CTarsaStandIn::SetDpi(int dpi) { CTarsaWindowsDpi::Dpi().m_dpi = dpi; }

void CTarsaStandIn::SetLanguage(unsigned int language_id) {
  TarsaApp().m_settings.m_appearance.m_language_id = language_id;
}

void CTarsaStandIn::ReserveObjects(CTarsaDoc& doc, size_t count) {
  doc.m_slots.reserve(doc.m_slots.size() + count);
  doc.m_slot_of_id.reserve(doc.m_slot_of_id.size() + count);
}

void CTarsaStandIn::SetUndoMemoryLimit(size_t bytes) { TarsaApp().m_undo_memory_limit = bytes; }

size_t CTarsaStandIn::UndoMemory(const CTarsaDoc& doc) { return doc.m_undo_bytes; }

void CTarsaStandIn::KeepPlugInData(CTarsaDoc& doc, const ZK_UUID& plug_in_id,
                                   std::vector<unsigned char> bytes, const std::wstring& file) {
  doc.m_kept_plug_in_data.push_back(CTarsaDoc::PlugInData{plug_in_id, std::move(bytes), file});
}

const std::vector<CTarsaDoc::PlugInData>& CTarsaStandIn::KeptPlugInData(const CTarsaDoc& doc) {
  return doc.m_kept_plug_in_data;
}

void CTarsaStandIn::Reset() {
  CTarsaApp& app = TarsaApp();
  // Panels and their classes go first, then documents: the code of panels and of the user data
  // that objects carry may be in a module.
  app.ClosePanels();
  app.m_panel_classes.clear();
  while (!app.m_documents.empty()) CloseDocument(app.m_documents.begin()->first);
  CTarsaPlugInLoader::UnloadAll();
  while (!app.m_plug_ins.empty()) UnloadPlugIn(*app.m_plug_ins.back());
  app.m_command_line->Reset();
  TsScriptedAnswers().Reset();
  SetDpi(96);
  SetLanguage(1033);
  app.m_message_boxes.clear();
  app.m_stance_changes.clear();
  app.m_scripts.clear();
  app.m_stance_changed_handler = nullptr;
  app.m_undo_memory_limit = CTarsaApp::kUndoMemoryLimit;
  ClearTranslations();
  SetLocalizationObserver(nullptr);
}
