// CKorvoUndoEventHandler: the undo record of a change of a document's stance table. It holds the
// table as it was before the change; undoing puts that snapshot back as the document's table.
// The host owns the record from the moment the undo scope hands it over.
#pragma once

#include "data/stance_table.h"
#include "host/tarsa/tarsa_undo.h"

class CKorvoUndoEventHandler : public CTarsaUndoEventHandler {
 public:
  // Takes ownership of `snapshot`, which may be null (the record then does nothing).
  CKorvoUndoEventHandler(CKorvoDocData* snapshot, unsigned int doc_serial_number);
  ~CKorvoUndoEventHandler() override;

  // Replaces the entries of the document's table by copies of the snapshot's; the snapshot stays
  // in the record. Nothing is announced from here: the event watcher refreshes after the undo.
  void Undo(const CTarsaDoc& doc, const wchar_t* description, bool created_by_redo,
            unsigned int undo_record_serial_number) override;

  CKorvoDocData* m_snapshot;
  unsigned int m_doc_serial_number;
};
