// CKorvoUndoEventHandler: the undo record of a change of a document's stance table. It holds the
// table as it was before the change. The host calls it when the user undoes the step and again
// when the user redoes it; each call puts back the table it holds and keeps the one it overwrote,
// so undo, redo and undo again give back each table exactly, ids included. The host owns the
// record from the moment the undo scope hands it over.
#pragma once

#include <memory>

#include "data/table_snapshot.h"
#include "host/tarsa/tarsa_undo.h"

class CKorvoUndoEventHandler : public CTarsaUndoEventHandler {
 public:
  // `snapshot` may be null: the record then does nothing.
  CKorvoUndoEventHandler(std::shared_ptr<const CKorvoTableSnapshot> snapshot,
                         unsigned int doc_serial_number);

  // Exchanges the entries of the document's table with the record's. Nothing is announced from
  // here: the event watcher refreshes after the undo or redo.
  void Undo(const CTarsaDoc& doc, const wchar_t* description, bool created_by_redo,
            unsigned int undo_record_serial_number) override;
  // The record with the entries its snapshot holds itself; entries shared with earlier
  // snapshots, and the names' characters, are counted where they were first copied.
  unsigned int SizeOf() const override;

  std::shared_ptr<const CKorvoTableSnapshot> m_snapshot;  // the table the next call puts back
  unsigned int m_doc_serial_number;
};
