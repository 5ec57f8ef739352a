// CTarsaStandIn: the controls of the host stand-in that only the host program and tests use. A
// real host does these things through its own user interface; the plug-in never calls them.
// Through them one makes and closes documents, loads plug-ins, feeds input to the command line
// and takes its output, and reads what the host showed: message boxes, the documents whose
// stances changed, how often views were regenerated and panels asked for a rebuild.
//
// Everything here acts on the one application, TarsaApp(). Reset() puts the host back as it
// started, except that runtime serial numbers are never given twice.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/platform/standin/scripted_answers.h"
#include "host/tarsa/standin/tarsa_command_line.h"
#include "host/tarsa/tarsa_app.h"

class CTsNamedDocObjectManagerDlg;
class ITsStanceDynamicAccess;
struct TsModelFileStamp;

class CTarsaStandIn {
 public:
  // Documents. NewDocument makes an empty document, owned by the application, and makes it the
  // active one. CloseDocument is false when no open document has that serial number; the newest
  // remaining document becomes the active one.
  static CTarsaDoc* NewDocument();
  static bool CloseDocument(unsigned int serial_number);
  // False when there is no open document with that serial number.
  static bool SetActiveDocument(unsigned int serial_number);
  // Opens a model file as a new document and makes it the active one: null, with a message in
  // `error` and nothing changed, when the file cannot be used (running out of memory included).
  // `read`, when given, receives the stamp of the file read (host/tarsa/standin/
  // tarsa_model_file.h).
  static CTarsaDoc* OpenDocument(const std::string& path, std::wstring& error,
                                 TsModelFileStamp* read = nullptr);
  // The open documents, oldest first.
  static std::vector<CTarsaDoc*> Documents();

  // The host's Undo and Redo of a document's last step: false when there is none, or a step is
  // being recorded.
  static bool Undo(CTarsaDoc& doc);
  static bool Redo(CTarsaDoc& doc);
  static int UndoStepCount(const CTarsaDoc& doc);
  static int RedoStepCount(const CTarsaDoc& doc);
  // Forgets the document's undo and redo steps and frees the objects they kept, and the deleted
  // objects, which nothing can bring back any more.
  static void ClearUndo(CTarsaDoc& doc);
  // The memory that each document's undo may keep, 256 MB at start: beyond it the oldest steps
  // are dropped (the newest is always kept), and the first drop in a document says so. The
  // bytes the document's steps hold now.
  static void SetUndoMemoryLimit(size_t bytes);
  static size_t UndoMemory(const CTarsaDoc& doc);

  // Plug-ins. LoadPlugIn calls the plug-in's OnLoadPlugIn and, when that succeeds, adds it to
  // the plug-ins the host asks for document data: false (the plug-in not added) when it refused
  // or threw, with why in `reason` when given (the plug-in's error string, empty when it gave
  // none).
  // UnloadPlugIn closes the panels of the classes the plug-in registered and forgets the classes,
  // calls OnUnloadPlugIn and removes it; false when it was not loaded.
  static bool LoadPlugIn(CTarsaPlugIn& plug_in, std::wstring* reason = nullptr);
  static bool UnloadPlugIn(CTarsaPlugIn& plug_in);
  static const std::vector<CTarsaPlugIn*>& PlugIns();
  // The host access interface a plug-in handed over (Stance_SetTarsaDynamicAccess), or null.
  static ITsStanceDynamicAccess* StanceDynamicAccess();
  // How many event watchers are registered: a plug-in that is unloaded must leave none of its own.
  static size_t EventWatcherCount();

  // Every registered command, in the order they were made.
  static std::vector<CTarsaCommand*> Commands();

  // The command line: input fed through its reader, output taken with TakeOutput.
  static CTarsaCommandLine& CommandLine();

  // The macros run with CTarsaApp::RunScript since the last call, each with its echo mode.
  static std::vector<std::pair<std::wstring, int>> TakeScripts();

  // Message boxes shown since the last call, in order; the host program prints each one.
  using ShownMessageBox = CTarsaApp::ShownMessageBox;
  static std::vector<ShownMessageBox> TakeMessageBoxes();

  // The serial numbers of the documents StanceChanged was called with since the last call, in
  // order. A handler, when set, is called as well (the host program refreshes its views).
  static std::vector<unsigned int> TakeStanceChanges();
  static void SetStanceChangedHandler(std::function<void(CTarsaDoc&)> handler);

  // How often a document's views were regenerated and redrawn.
  static int RegenCount(const CTarsaDoc& doc);
  static int RedrawCount(const CTarsaDoc& doc);

  // Panels. Panel gives the open panel of a tab, or null. The user's actions on a panel (Click of
  // a control, ContextMenu at a screen point, DoubleClick of a list item) go to the panel as the
  // window system delivers them; while a command waits for input, the host first cancels it and
  // delivers the action once it has ended, if the panel is still open. Click is false when the
  // control does not exist or is disabled. SelectItems selects exactly the list items given; Resize
  // gives the panel a new size in pixels and lays it out again.
  static CTsNamedDocObjectManagerDlg* Panel(const ZK_UUID& tab_id);
  // The open panels that list named objects, in the order of their tab ids.
  static std::vector<CTsNamedDocObjectManagerDlg*> Panels();
  // Opens a tab for each registered panel class, as a host's window shows its panels at start.
  static void OpenEveryPanel();
  static bool Click(CTsNamedDocObjectManagerDlg& panel, int control_id);
  static void ContextMenu(CTsNamedDocObjectManagerDlg& panel, POINT point);
  static void DoubleClick(CTsNamedDocObjectManagerDlg& panel, int item);
  static void SelectItems(CTsNamedDocObjectManagerDlg& panel, const std::vector<int>& items);
  static void Resize(CTsNamedDocObjectManagerDlg& panel, int width, int height);
  // The answers of the panels' dialogs, menus and questions while no front end installed its own
  // (SetUserAnswers): script them before the action, read what was asked after it.
  static CTsScriptedAnswers& Answers();

  // The host's clock and idle time. AdvanceClock moves the clock on and carries out the panels'
  // work that became due (deferred rebuilds); RunIdleWork carries out all pending work now, as
  // the host does when it waits for the user.
  static void AdvanceClock(unsigned int milliseconds);
  static void RunIdleWork();
  // A panel's rebuild requests: whether one is pending, its delay, how many were asked for, and
  // how many rebuilds were carried out.
  static bool RebuildPending(const CTsNamedDocObjectManagerDlg& panel);
  static unsigned int RebuildDelay(const CTsNamedDocObjectManagerDlg& panel);
  static int RebuildRequestCount(const CTsNamedDocObjectManagerDlg& panel);
  static int RebuildCount(const CTsNamedDocObjectManagerDlg& panel);

  // The screen's resolution (96 at start) and the host's language (1033, English, at start).
  static void SetDpi(int dpi);
  static void SetLanguage(unsigned int language_id);

  // Translations. LoadTranslations reads a UTF-8 file of lines "id=text" ("\n" in a text stands
  // for a line break; empty lines and lines starting with "#" are skipped) and adds them to the
  // table. False, with the table as it was, when the file cannot be read or a line is malformed;
  // `error` then says which line.
  static bool LoadTranslations(const std::string& path, std::string* error = nullptr);
  static void SetTranslation(int string_id, const wchar_t* text);
  static void ClearTranslations();
  // Calls `observer` with every English text and string id the host is asked to localise; null
  // stops it.
  static void SetLocalizationObserver(
      std::function<void(const wchar_t* english, int string_id)> observer);

  // Makes room in the document for `count` more objects, so that adding a file's objects grows
  // none of its tables on the way.
  static void ReserveObjects(CTarsaDoc& doc, size_t count);

  // Document data of plug-ins that were not loaded when a document was opened, or refused it,
  // kept so that saving the document writes it back: the plug-in id, the block's bytes and the
  // file it was read from.
  static void KeepPlugInData(CTarsaDoc& doc, const ZK_UUID& plug_in_id,
                             std::vector<unsigned char> bytes, const std::wstring& file);
  static const std::vector<CTarsaDoc::PlugInData>& KeptPlugInData(const CTarsaDoc& doc);

  // Sends a notification to every registered, enabled event watcher, as the host's own
  // operations do.
  template <class Notify>
  static void NotifyEventWatchers(Notify&& notify) {
    TarsaApp().NotifyEventWatchers(std::forward<Notify>(notify));
  }

  // Puts the host back as it started: every panel closed and its class forgotten, every document
  // closed, every plug-in unloaded (and its module closed), the command line's input, output and
  // pending macro dropped, message boxes, the StanceChanged log and its handler, open tabs,
  // scripted answers and translations cleared, the resolution and language as at start.
  static void Reset();
};
