// CKorvoCommandRecord: what the event watcher remembers while a host command runs, so that the
// objects a command makes out of a stance object (by splitting, joining, rebuilding) stay in its
// stances, and so that the stances no object carries any more are removed once, when the command
// ends. The watcher owns the record from the command's start to its end.
//
// Deletions and additions are paired in the order they come. Objects added before a deletion are
// made from the deleted object: each that has no record of its own receives a copy of the deleted
// object's record, or nothing when it had none. A deletion that comes before any addition belongs
// to the next addition, which receives the copy; later additions wait for the next deletion.
// Replacements and the host's undo and redo never reach the record.
#pragma once

#include <vector>

#include "data/placement_record.h"
#include "drift/match_counts.h"
#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/zk_array.h"

class CKorvoCommandRecord {
 public:
  CKorvoCommandRecord() = default;
  ~CKorvoCommandRecord();
  CKorvoCommandRecord(const CKorvoCommandRecord&) = delete;
  CKorvoCommandRecord& operator=(const CKorvoCommandRecord&) = delete;

  // A deletion by the command: hands the object's record on to the objects added since the last
  // pairing, or keeps a copy of it for the next addition. A deleted stance object also asks for
  // the removal of unused stances at the command's end. Each object given a record is counted
  // into `counts` when they are given.
  void NoteDeletedObject(CTarsaDoc& doc, const CTarsaObject& object, CKorvoMatchCounts* counts);
  // An addition by the command: receives the record kept from a deletion waiting for it, or waits
  // for the next deletion.
  void NoteAddedObject(CTarsaObject& object);
  // The documents in which a stance object was deleted, each once, in order.
  const std::vector<unsigned int>& RemovalDocuments() const { return m_removal_docs; }

 private:
  // Gives every waiting object that has no record of its own a copy of the saved record, then
  // forgets the waiting objects and the saved record. Nothing happens while either is missing.
  void HandOnRecord(CTarsaDoc& doc, CKorvoMatchCounts* counts);

  bool m_deletion_waiting = false;           // a deletion no addition has been paired with yet
  CKorvoUserData* m_saved_record = nullptr;  // owned; the waiting deletion's record, or null
  ZK_SimpleArray<ZK_UUID> m_added_ids;       // additions no deletion has been paired with yet
  std::vector<unsigned int> m_removal_docs;
};
