// CTarsaApp: the running host application. It owns the open documents, knows the active one,
// and sends notifications to the registered event watchers. One instance, TarsaApp(). What only
// the host program and tests use of it is in host/tarsa/standin/tarsa_standin.h.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/platform/window.h"
#include "host/tarsa/tarsa_doc.h"
#include "host/tarsa/tarsa_dockbar.h"
#include "host/tarsa/tarsa_event_watcher.h"
#include "host/tarsa/tarsa_plugin.h"

class CTarsaCommandLine;

// A window that shows a document.
class CTarsaView : public CWnd {};

// How the host looks: its language, as a platform language identifier (1033: English).
class CTarsaAppearanceSettings {
 public:
  unsigned int LanguageIdentifier() const { return m_language_id; }

 private:
  friend class CTarsaStandIn;
  unsigned int m_language_id = 1033;
};

class CTarsaAppSettings {
 public:
  // The appearance settings; `defaults` asks for the host's defaults instead of the user's.
  const CTarsaAppearanceSettings& AppearanceSettings(bool defaults) const;

 private:
  friend class CTarsaStandIn;
  CTarsaAppearanceSettings m_appearance;
  CTarsaAppearanceSettings m_default_appearance;
};

class CTarsaApp {
 public:
  CTarsaApp(const CTarsaApp&) = delete;
  CTarsaApp& operator=(const CTarsaApp&) = delete;
  ~CTarsaApp();

  // The active document, or null when none is open.
  CTarsaDoc* ObsoleteActiveDoc() const;

  // printf-style output to the command line, in which "%s" takes a wide string.
  void Print(const wchar_t* format, ...);
  // Runs a macro as if typed: while a command waits for input, its words answer that command's
  // prompts; otherwise the commands it names run now. Echo 1 shows the macro's words, 0 does not.
  void RunScript(const wchar_t* macro, int echo);

  // Dock bar tabs: which panels are open (tarsa_dockbar.h). Opening a tab of a registered panel
  // class creates the panel and its window: false when that fails. Closing destroys it.
  bool OpenDockbarTab(const ZK_UUID& tab_id);
  bool CloseDockbarTab(const ZK_UUID& tab_id);
  bool IsTabVisible(const ZK_UUID& tab_id) const { return m_open_tabs.count(tab_id) != 0; }
  // See CTarsaTabbedDockBarDialog::Register.
  bool RegisterPanelClass(const CRuntimeClass* runtime_class, int template_id,
                          AFX_MODULE_STATE* module_state);

  // The host's clock, in milliseconds since it started; the host's timers run by it.
  unsigned long long ClockMs() const { return m_clock_ms; }

  // The host's main window, and the view of the active document (null without one).
  CWnd* MainWnd();
  CTarsaView* ActiveView();
  CTarsaAppSettings& AppSettings() { return m_settings; }

  // Event watchers: true when the watcher's registration changed.
  bool RegisterEventWatcher(CTarsaEventWatcher& watcher);
  bool UnRegisterEventWatcher(CTarsaEventWatcher& watcher);

 private:
  friend class CTarsaCommandLine;
  friend class CTarsaDoc;
  friend class CTarsaStandIn;
  friend CTarsaApp& TarsaApp();
  friend void StanceChanged(CTarsaDoc& doc);
  friend int TarsaMessageBox(const wchar_t* text, const wchar_t* caption, unsigned int flags);

  CTarsaApp();

  CTarsaDoc* Document(unsigned int serial_number) const;
  void OnStanceChanged(CTarsaDoc& doc);
  // Data that a plug-in could not read is written back with the model until the plug-in writes
  // data of its own: the first stance change that makes it do so says so, once per document.
  void TellOfReplacedPlugInData(CTarsaDoc& doc);
  int ShowMessageBox(const wchar_t* text, const wchar_t* caption, unsigned int flags);

  // Calls `notify(watcher)` for every registered, enabled watcher, in the order of registration.
  // A watcher unregistered or disabled during the round is not called after that.
  template <class Notify>
  void NotifyEventWatchers(Notify&& notify) {
    // Each depth of nested notification keeps its list of watchers, reused from round to round,
    // so that a notification allocates nothing.
    if (m_rounds.size() <= m_round_depth) m_rounds.emplace_back();
    std::vector<CTarsaEventWatcher*>& round = m_rounds[m_round_depth++];
    round.assign(m_watchers.begin(), m_watchers.end());
    for (CTarsaEventWatcher* watcher : round) {
      const bool still_registered =
          std::find(m_watchers.begin(), m_watchers.end(), watcher) != m_watchers.end();
      if (still_registered && watcher->IsEnabled()) notify(*watcher);
    }
    --m_round_depth;
  }

  struct PanelClass {
    const CRuntimeClass* runtime_class;
    int template_id;
    AFX_MODULE_STATE* module_state;
    bool tab_id_known;
    ZK_UUID tab_id;
    CTarsaPlugIn* owner;  // the plug-in that was loading when the class was registered
  };
  // A new panel of the class registered for the tab, or null.
  CTarsaTabbedDockBarDialog* NewPanel(const ZK_UUID& tab_id, const PanelClass** panel_class);
  // Carries out panels' work that is due, or all of it when the host is idle.
  void RunDueWork(bool idle);
  void ClosePanels();
  // Closes the panels of the classes a plug-in registered, and forgets the classes.
  void ForgetPanelClasses(const CTarsaPlugIn* owner);

  // What only the stand-in's controls use (host/tarsa/standin/tarsa_standin.h).
  struct ShownMessageBox {
    std::wstring m_text;
    std::wstring m_caption;
    unsigned int m_flags;
  };
  std::map<unsigned int, std::unique_ptr<CTarsaDoc>> m_documents;
  unsigned int m_next_serial_number = 1;
  unsigned int m_active_serial_number = 0;
  std::vector<CTarsaEventWatcher*> m_watchers;
  std::deque<std::vector<CTarsaEventWatcher*>> m_rounds;  // a deque: references stay valid
  size_t m_round_depth = 0;
  std::unique_ptr<CTarsaCommandLine> m_command_line;
  std::set<ZK_UUID> m_open_tabs;
  std::vector<PanelClass> m_panel_classes;
  CTarsaPlugIn* m_loading_plug_in = nullptr;
  std::map<ZK_UUID, std::unique_ptr<CTarsaTabbedDockBarDialog>> m_panels;
  unsigned long long m_clock_ms = 0;
  CWnd m_main_window;
  CTarsaView m_view;
  CTarsaAppSettings m_settings;
  std::vector<CTarsaPlugIn*> m_plug_ins;
  std::vector<ShownMessageBox> m_message_boxes;
  std::vector<unsigned int> m_stance_changes;
  std::vector<std::pair<std::wstring, int>> m_scripts;
  std::function<void(CTarsaDoc&)> m_stance_changed_handler;
  static constexpr size_t kUndoMemoryLimit = size_t{256} << 20;  // at start
  size_t m_undo_memory_limit = kUndoMemoryLimit;
  size_t m_undo_freed = 0;  // by undo steps dropped since memory was last given back
};

// The one application object of the running host.
CTarsaApp& TarsaApp();

// Exported by the host for the stance plug-in: the stances of `doc` changed.
void StanceChanged(CTarsaDoc& doc);
