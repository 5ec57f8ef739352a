// CKorvoPlugIn: the plug-in object, one static instance per loaded module, reached through
// KorvoPlugIn(). The host asks it for the plug-in's identity; the plug-in's own code asks it for
// the stance table of a document and for the event watcher. It owns the document registry (every
// stance table) and the event watcher.
#pragma once

#include "data/document_registry.h"
#include "host/tarsa/tarsa_plugin.h"

class CKorvoEventWatcher;

class CKorvoPlugIn : public CTarsaPlugIn {
 public:
  CKorvoPlugIn();
  ~CKorvoPlugIn() override;

  // FCEA57AE-7C24-4BC5-A067-1DFFA6139859
  ZK_UUID PlugInID() const override;

  // Registers and enables the event watcher: true.
  bool OnLoadPlugIn() override;
  // Disables and unregisters the event watcher; it stays until the plug-in object goes.
  void OnUnloadPlugIn() override;

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

  // The stance table of the document with that runtime serial number, created empty on the first
  // request; never null. The registry keeps ownership.
  CKorvoDocData* DocData(unsigned int doc_serial_number);
  // Destroys every stance table; only the plug-in object's destruction calls it.
  void RemoveAllDocData();
  // The event watcher, created first if there is none; the plug-in object keeps ownership.
  CKorvoEventWatcher* EventWatcher();

 private:
  CKorvoEventWatcher* m_event_watcher;
  CKorvoDocDataMap m_doc_data_map;
};

// The one plug-in object; it lives as long as the module.
CKorvoPlugIn& KorvoPlugIn();
