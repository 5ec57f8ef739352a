// CKorvoUndoScope: a guard on the stack of an operation that may change a document's stance
// table. It keeps the table as it was when the scope began: the table hands the scope a snapshot
// of itself just before its first change, so that an operation that changes nothing takes
// nothing. When the scope ends with a changed table, it hands the host an undo record that puts
// the snapshot back; otherwise it lets the snapshot go.
#pragma once

#include <memory>

#include "data/table_snapshot.h"
#include "host/tarsa/tarsa_doc.h"

class CKorvoUndoScope {
 public:
  explicit CKorvoUndoScope(CTarsaDoc& doc);
  ~CKorvoUndoScope();
  CKorvoUndoScope(const CKorvoUndoScope&) = delete;
  CKorvoUndoScope& operator=(const CKorvoUndoScope&) = delete;

 private:
  friend class CKorvoDocData;
  // Takes a snapshot of `table` unless the scope has one already.
  void TakeSnapshot(CKorvoDocData& table);

  CKorvoDocData* m_table;  // the document's table, which the registry owns
  // Null until the first change; shared with the table and, from the end, with the undo record.
  std::shared_ptr<const CKorvoTableSnapshot> m_snapshot;
  unsigned int m_doc_serial_number;
};
