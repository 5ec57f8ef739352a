// CKorvoDocData: a document's stance table, the ordered list of the stances that exist in that
// document, each an id and a display name. The document registry owns one table per document and
// creates it on the first request for the document's runtime serial number.
//
// Every successful change made through Add, RemoveByName, Remove or Rename is announced: first
// the Stances panel is asked for a rebuild, then the host is told with StanceChanged. Read,
// assignment and RemoveAll announce nothing.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "data/name_set.h"
#include "data/stance_id_set.h"
#include "host/platform/c_array.h"
#include "host/zefkit/zk_archive.h"
#include "host/zefkit/zk_string.h"
#include "host/zefkit/zk_uuid.h"

class CKorvoTableSnapshot;
class CKorvoUndoScope;
class CTarsaDoc;

class CKorvoDocData {
 public:
  struct USER_DATA {
    ZK_UUID m_id;
    ZK_wString m_name;
  };

  CKorvoDocData();
  // A copy of the entries that belongs to no document.
  CKorvoDocData(const CKorvoDocData& source);
  // Replaces the entries by copies of the source's, made in one allocation; the target keeps its
  // own document.
  CKorvoDocData& operator=(const CKorvoDocData& source);
  virtual ~CKorvoDocData();

  // Same entries in the same order, ids in all 16 bytes and names exactly (case counts).
  bool operator==(const CKorvoDocData& other) const;
  bool operator!=(const CKorvoDocData& other) const { return !(*this == other); }

  int Count() const;

  // 1 added at the end; 0 refused because of the id (nil, or already in the table); -1 refused
  // because of the name (empty, or already in the table ignoring case). Scanning in table order,
  // the first entry that matches decides, and a name match is tested before an id match.
  int Add(const ZK_UUID& id, ZK_wString name);
  // True when the first stance of that name (ignoring case) was removed.
  bool RemoveByName(ZK_wString name);
  // True when the stance with that id was removed.
  bool Remove(const ZK_UUID& id);
  // 1 renamed; 0 no stance of the old name (or id); -1 the new name is empty or already used
  // ignoring case, by any stance, the renamed one included. The new name is tested first.
  int Rename(const wchar_t* old_name, const wchar_t* new_name);
  int Rename(const ZK_UUID& id, const wchar_t* new_name);

  // The first entry of that name (ignoring case) or id, or null. The table keeps the entry; the
  // pointer is valid until the table next changes.
  USER_DATA* FindByName(const wchar_t* name) const;
  USER_DATA* FindById(const ZK_UUID& id) const;
  bool NameExists(const wchar_t* name) const;
  // The ids and the names of every stance: built in one pass, for operations that test many ids
  // or names.
  CKorvoStanceIdSet Ids() const;
  CKorvoNameSet Names() const;

  void RemoveAll();

  // Removes, in table order, every stance (but a nil id) that no placement record in the
  // document refers to; each removal is announced when `announce_each`, else the caller announces
  // once. Nothing happens for an empty table or a document that no longer exists.
  void RemoveUnusedStances(bool announce_each = true);
  // The clean-up at the end of an open of `doc`, whose table this is: drops the record entries
  // whose stance the table does not know, then removes, as RemoveUnusedStances does, each
  // stance no entry is left for, announcing each; one visit that reads every entry once.
  void RemoveStaleEntriesAndUnusedStances(CTarsaDoc& doc);

  // The table's own enumeration over m_cursor: FirstEntry starts a walk (null for an empty
  // table, leaving m_cursor as it is), NextEntry advances it (null at the end). One walk of a
  // table must end before another begins.
  USER_DATA* FirstEntry();
  USER_DATA* NextEntry();

  // True when every write succeeded; stops at the first that fails.
  bool Write(ZK_BinaryArchive& archive) const;
  // Replaces the entries by the archive's, as read, without any test. False when a read failed;
  // the entries read before the failure stay.
  bool Read(ZK_BinaryArchive& archive);
  // Read for a document's own table from its model file, which refuses what no writer writes: a
  // negative count, or bytes after the last stance. The entries are replaced only by a table
  // read whole; on false they stay as they were.
  bool ReadWhole(ZK_BinaryArchive& archive);

  // Appends a stance and announces the change, as Add does when it adds, for callers that made
  // sure themselves, once for many stances, that the id is new and not nil and the name not
  // empty and not in use in any letter case (the import of a file's stances).
  void AddFree(const ZK_UUID& id, const ZK_wString& name);

  // The entries as they are now, sharing with the snapshot taken before what did not change
  // since: a table changed by one save costs the snapshot one entry. Never null.
  std::shared_ptr<const CKorvoTableSnapshot> Snapshot();
  // Replaces the entries by the snapshot's, announcing nothing; the table keeps its document.
  void Restore(std::shared_ptr<const CKorvoTableSnapshot> snapshot);
  // Equality with a snapshot, as with a table.
  bool Equals(const CKorvoTableSnapshot& snapshot) const;

  // Announces a change: asks the Stances panel for a rebuild when it has a window, then tells
  // the host with StanceChanged when the document still exists.
  void NotifyStancesChanged() const;

  CArray<USER_DATA*, USER_DATA*> m_entries;
  int m_cursor = 0;
  unsigned int m_doc_serial_number = 0;

 private:
  friend class CKorvoUndoScope;
  // Read, refusing a negative count when `whole`.
  bool ReadTable(ZK_BinaryArchive& archive, bool whole);
  // Called by every change of the entries before it happens, with the index of the first entry
  // it changes: each undo scope open on the table takes its snapshot now, if it has none yet, so
  // that a scope around an operation that changes nothing copies nothing.
  void BeforeChange(INT_PTR first_changed);

  // Removes, in table order, every stance of `unreferenced` but a nil id, announcing each removal
  // when `announce_each`.
  void RemoveStances(const CKorvoStanceIdSet& unreferenced, bool announce_each);

  // Replaces the entries by copies of `entries`, made in one allocation.
  void ReplaceEntries(const std::vector<const USER_DATA*>& entries);
  bool InBlock(const USER_DATA* entry) const;
  // Deletes an entry the table no longer lists; one in the block only gives up its name, and its
  // slot goes with the block.
  void Free(USER_DATA* entry);

  int IndexOfName(const wchar_t* name) const;
  int IndexOfId(const ZK_UUID& id) const;
  int RenameAt(int index, const wchar_t* new_name);
  void RemoveAt(int index);
  void Append(const ZK_UUID& id, const ZK_wString& name);

  std::vector<CKorvoUndoScope*> m_open_scopes;  // not copied with the entries
  // The last snapshot taken of the table or restored into it, and how many leading entries have
  // not changed since; neither is copied with the entries.
  std::shared_ptr<const CKorvoTableSnapshot> m_last_snapshot;
  INT_PTR m_unchanged = 0;
  // The entries copied by the last assignment or restore, in one block, so that putting back an
  // undo snapshot costs one allocation, not one per stance. Entries added later are allocated one
  // by one, so that no entry ever moves; a removed entry's slot stays unused until the block goes.
  std::unique_ptr<USER_DATA[]> m_block;
  INT_PTR m_block_size = 0;
};
