// CKorvoCommandRecord: what the event watcher remembers while a host command runs, so that the
// objects a command makes out of a stance object (by splitting, joining, rebuilding) stay in its
// stances: a copy of the placement record of a deleted object, and the ids of the objects added
// since. The watcher owns the record from the command's start to its end.
#pragma once

#include "data/placement_record.h"
#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/zk_array.h"

class CKorvoCommandRecord {
 public:
  CKorvoCommandRecord() = default;
  ~CKorvoCommandRecord();
  CKorvoCommandRecord(const CKorvoCommandRecord&) = delete;
  CKorvoCommandRecord& operator=(const CKorvoCommandRecord&) = delete;

  // Keeps a copy of the deleted object's record, unless one is kept already, then hands it on.
  void NoteDeletedObject(CTarsaDoc& doc, const CTarsaObject& object);
  // Gives every added object that has no record of its own a copy of the kept record, then
  // forgets both. Nothing happens while either is missing.
  void HandOnRecord(CTarsaDoc& doc);

  CKorvoUserData* m_saved_record = nullptr;  // owned
  ZK_SimpleArray<ZK_UUID> m_added_ids;
};
