// CKorvoPlugIn: the plug-in object, one static instance per loaded module
// (plugin/korvo_module.cpp), reached through KorvoPlugIn(). The host asks it for the plug-in's
// identity and loads and unloads it; the plug-in's own code asks it for the stance table of a
// document and for the event watcher. It owns the document registry (every stance table), the
// script object, the event watcher and, while the plug-in is loaded, the host access object.
#pragma once

#include "data/document_registry.h"
#include "host/tarsa/tarsa_plugin.h"
#include "script/script_object.h"

class CKorvoDynamicAccess;
class CKorvoEventWatcher;

class CKorvoPlugIn : public CTarsaUtilitySystemPlugIn {
 public:
  // The version text is the module's build stamp; the event watcher is made but not registered.
  CKorvoPlugIn();
  // Destroys every stance table and the event watcher, and withdraws the host access interface.
  ~CKorvoPlugIn() override;

  // FCEA57AE-7C24-4BC5-A067-1DFFA6139859
  ZK_UUID PlugInID() const override;
  // "Stance", and its translation (string id 19663).
  const wchar_t* PlugInName() const override;
  const wchar_t* LocalPlugInName() const override;
  // The build stamp, as "Dec 15 2015  16:15:37".
  const wchar_t* PlugInVersion() const override;

  // Registers and enables the event watcher and hands the host a new host access object: the
  // base's result.
  bool OnLoadPlugIn() override;
  // Withdraws and destroys the host access object and disables and unregisters the event
  // watcher, which stays until the plug-in object goes. Tables and records stay as they are.
  void OnUnloadPlugIn() override;
  // Loaded when the host starts: 2.
  int PlugInLoadTime() override;
  // Not in the host's help menu: false.
  bool AddToPlugInHelpMenu() const override;
  // No help of its own: the base's result.
  bool OnDisplayPlugInHelp(HWND parent) override;

  // The stance table in model files. A document without stances writes no block.
  bool ShouldWriteDocument(const CTarsaFileWriteOptions& options) override;
  // Writes version 0, a placeholder and the table: true when every write succeeded.
  bool WriteDocument(CTarsaDoc& doc, ZK_BinaryArchive& archive,
                     const CTarsaFileWriteOptions& options) override;
  // Refuses a block of a newer version with a message box. Opening a file replaces the
  // document's table by the file's; merging or referencing one imports its stances. True when the
  // block was accepted and read.
  bool ReadDocument(CTarsaDoc& doc, ZK_BinaryArchive& archive,
                    const CTarsaFileReadOptions& options) override;
  // What the version and the placeholder that open the plug-in's block say.
  enum class BlockHeader { read, newer, damaged };
  // Reads the version and the placeholder, leaving the archive at the table: `newer` when the
  // version cannot be read or is newer than this plug-in reads; `damaged` when the placeholder is
  // cut short.
  static BlockHeader ReadBlockHeader(ZK_BinaryArchive& archive);

  // The script object's IUnknown or IDispatch, with one reference added for the caller; null for
  // every other interface id.
  IUnknown* GetScriptObjectInterface(REFIID iid) override;

  // The stance table of the document with that runtime serial number, created empty on the first
  // request; never null. The registry keeps ownership.
  CKorvoDocData* DocData(unsigned int doc_serial_number);
  // Destroys every stance table. In the plug-in only its destruction calls it; sessions that
  // open many documents in turn without the plug-in going (the fuzz targets, the benchmarks)
  // call it to keep the closed documents' tables from piling up.
  void RemoveAllDocData();
  // The event watcher, created first if there is none; the plug-in object keeps ownership.
  CKorvoEventWatcher* EventWatcher();

 private:
  ZK_wString m_version;
  CKorvoEventWatcher* m_event_watcher;
  CKorvoDocDataMap m_doc_data_map;
  CKorvoDynamicAccess* m_dynamic_access;
  CKorvoScriptObject m_script_object;
};

// The one plug-in object; it lives as long as the module (plugin/korvo_module.cpp).
CKorvoPlugIn& KorvoPlugIn();
