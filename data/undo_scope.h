// CKorvoUndoScope: a guard on the stack of an operation that may change a document's stance
// table. It keeps the table as it was when the scope began: the table hands the scope a snapshot
// of itself just before its first change, so that an operation that changes nothing copies
// nothing. When the scope ends with a changed table, it hands the host an undo record that puts
// the snapshot back; otherwise it discards the snapshot.
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
  friend class CKorvoDocData;
  // Keeps a copy of `table` unless the scope has one already.
  void TakeSnapshot(const CKorvoDocData& table);
  bool HasSnapshot() const { return m_snapshot != nullptr; }
  // Takes ownership of `snapshot`, made for a scope that has none.
  void KeepSnapshot(CKorvoDocData* snapshot) { m_snapshot = snapshot; }

  CKorvoDocData* m_table;     // the document's table, which the registry owns
  CKorvoDocData* m_snapshot;  // null until the first change; owned until handed to the record
  unsigned int m_doc_serial_number;
};
