// CKorvoUndoScope: a guard on the stack of an operation that may change a document's stance
// table. It takes a snapshot of the table when it begins; when it ends with a changed table it
// hands the host an undo record that puts the snapshot back, and otherwise it discards the
// snapshot.
#pragma once

#include "data/stance_table.h"
#include "host/tarsa/tarsa_doc.h"

class CKorvoUndoScope {
 public:
  explicit CKorvoUndoScope(CTarsaDoc& doc);
  ~CKorvoUndoScope();
  CKorvoUndoScope(const CKorvoUndoScope&) = delete;
  CKorvoUndoScope& operator=(const CKorvoUndoScope&) = delete;

 private:
  CKorvoDocData* m_snapshot;  // owned until handed to the undo record
  unsigned int m_doc_serial_number;
};
