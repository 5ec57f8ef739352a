// CTarsaApp: the running host application. It owns the open documents, knows the active one,
// and sends notifications to the registered event watchers. One instance, TarsaApp().
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include <set>
#include <string>

#include "host/tarsa_command_line.h"
#include "host/tarsa_doc.h"
#include "host/tarsa_event_watcher.h"
#include "host/tarsa_plugin.h"

class CTarsaApp {
 public:
  CTarsaApp() = default;
  CTarsaApp(const CTarsaApp&) = delete;
  CTarsaApp& operator=(const CTarsaApp&) = delete;
  ~CTarsaApp();

  // Makes a new empty document, owned by the application, and makes it the active one. Serial
  // numbers are given from 1 upward and never given again.
  CTarsaDoc* NewDocument();
  // Closes and destroys the document: false when no open document has that serial number. The
  // newest remaining document becomes the active one.
  bool CloseDocument(unsigned int serial_number);
  // The open document with that serial number, or null.
  CTarsaDoc* Document(unsigned int serial_number) const;
  // The active document, or null when none is open.
  CTarsaDoc* ObsoleteActiveDoc() const;
  // Makes an open document the active one: false when there is none of that serial number.
  bool SetActiveDocument(unsigned int serial_number);

  // The command line, and printf-style output to it in which "%s" takes a wide string.
  CTarsaCommandLine& CommandLine() { return m_command_line; }
  void Print(const wchar_t* format, ...);
  // Runs a macro as if typed (CTarsaCommandLine::RunScript).
  void RunScript(const wchar_t* macro, int echo) { m_command_line.RunScript(macro, echo); }

  // Dock bar tabs: which panels are open.
  bool OpenDockbarTab(const ZK_UUID& tab_id);
  bool CloseDockbarTab(const ZK_UUID& tab_id);
  bool IsTabVisible(const ZK_UUID& tab_id) const { return m_open_tabs.count(tab_id) != 0; }

  // The plug-ins the host has loaded, which it asks for their document data in model files.
  void AddPlugIn(CTarsaPlugIn& plug_in);
  void RemovePlugIn(CTarsaPlugIn& plug_in);
  const std::vector<CTarsaPlugIn*>& PlugIns() const { return m_plug_ins; }

  // Model files. OpenDocument makes a new document of the file and makes it the active one;
  // null, with a message in `error` and nothing changed, when the file cannot be used.
  CTarsaDoc* OpenDocument(const std::string& path, std::wstring& error);

  // Message boxes shown, in order, with their captions (see TarsaMessageBox).
  struct ShownMessageBox {
    std::wstring m_text;
    std::wstring m_caption;
    unsigned int m_flags;
  };
  int ShowMessageBox(const wchar_t* text, const wchar_t* caption, unsigned int flags);
  std::vector<ShownMessageBox> TakeMessageBoxes();

  // What the host does when a plug-in reports that a document's stances changed (StanceChanged).
  // The host program refreshes its views; tests watch the calls.
  void SetStanceChangedHandler(std::function<void(CTarsaDoc&)> handler);
  void OnStanceChanged(CTarsaDoc& doc);

  // Event watchers: true when the watcher's registration changed.
  bool RegisterEventWatcher(CTarsaEventWatcher& watcher);
  bool UnRegisterEventWatcher(CTarsaEventWatcher& watcher);
  // Calls `notify(watcher)` for every registered, enabled watcher, in the order of registration.
  // A watcher unregistered or disabled during the round is not called after that.
  template <class Notify>
  void NotifyEventWatchers(Notify&& notify) {
    const std::vector<CTarsaEventWatcher*> round = m_watchers;
    for (CTarsaEventWatcher* watcher : round) {
      const bool still_registered =
          std::find(m_watchers.begin(), m_watchers.end(), watcher) != m_watchers.end();
      if (still_registered && watcher->IsEnabled()) notify(*watcher);
    }
  }

 private:
  std::map<unsigned int, std::unique_ptr<CTarsaDoc>> m_documents;
  unsigned int m_next_serial_number = 1;
  unsigned int m_active_serial_number = 0;
  std::function<void(CTarsaDoc&)> m_stance_changed_handler;
  std::vector<CTarsaEventWatcher*> m_watchers;
  CTarsaCommandLine m_command_line;
  std::set<ZK_UUID> m_open_tabs;
  std::vector<CTarsaPlugIn*> m_plug_ins;
  std::vector<ShownMessageBox> m_message_boxes;
};

// The one application object of the running host.
CTarsaApp& TarsaApp();

// Exported by the host for the stance plug-in: the stances of `doc` changed.
void StanceChanged(CTarsaDoc& doc);
