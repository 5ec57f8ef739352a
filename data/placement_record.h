// CKorvoUserData: the placement record, kernel user data on the geometry of every object that
// takes part in a stance. The kernel hands it every transform applied to the geometry, which it
// multiplies into its accumulated transform; for each stance of the object it keeps the
// accumulated transform as it was when the stance was saved or updated. The object that carries
// the record owns it: the kernel copies, transforms, writes, reads and destroys it with the object.
#pragma once

#include "data/sparse_xform.h"
#include "host/platform/c_array.h"
#include "host/zefkit/zk_archive.h"
#include "host/zefkit/zk_object.h"

class CTarsaObject;

class CKorvoUserData : public ZK_UserData {
 public:
  struct USER_DATA {
    ZK_UUID m_id;      // the stance
    ZK_Xform m_xform;  // the accumulated transform when the stance was saved or updated
  };

  // The entries in their order, read-only. They live in one block that copies of a record share:
  // a copy costs no entry, and an entry added to a copy goes into the block's free room when no
  // other record has used that room, so that the records a save's undo keeps (the object as it
  // was, and the copy that received the new entry) hold each entry once. Any other change gives
  // a record whose block is shared a block of its own first. Records live on the host's one
  // thread, so the block's count of users is a plain int.
  class Entries {
   public:
    Entries() = default;
    Entries(const Entries& source);
    Entries& operator=(const Entries& source);
    ~Entries();

    INT_PTR GetSize() const { return m_count; }
    INT_PTR GetCount() const { return m_count; }
    // The entry at `index` (0 to GetSize() - 1), inside the shared block: valid until the record
    // next changes.
    const USER_DATA* operator[](INT_PTR index) const { return Data() + index; }

   private:
    friend class CKorvoUserData;
    struct Block;

    USER_DATA* Data() const;
    void Append(const USER_DATA& entry);
    // The entries in a block of this record's own, to be changed in place; null when empty.
    USER_DATA* Editable();
    // Keeps the first `count` entries.
    void Truncate(int count);
    // Replaces the entries by the `count` at `entries`, which lie outside every block.
    void Assign(const USER_DATA* entries, int count);
    // Moves the entries into a new block of this record's own with room for `capacity`.
    void Reserve(int capacity);
    void Release();
    // The bytes of the block, shared out among the records that use it.
    size_t SharedBytes() const;

    Block* m_block = nullptr;
    int m_count = 0;  // this record's entries: the first m_count of the block
  };

  // E142DA6F-D632-4412-AFF8-37DF51C61556: which user data of an object the record is.
  static const ZK_UUID m_userdata_id;

  // The record's class registration with the kernel, a static object of the module
  // (plugin/korvo_module.cpp), through which the kernel re-creates records it reads.
  static const ZK_ClassId m_record_class;
  static const ZK_ClassId* ClassIdOfRecord() { return &m_record_class; }
  // A new empty record, owned by the caller: what the kernel reads a record into.
  static ZK_Object* CreateRecord();
  // `object` as a placement record, or null when it is none.
  static CKorvoUserData* Cast(ZK_Object* object);
  static const CKorvoUserData* Cast(const ZK_Object* object);
  // The record attached to a kernel object (a geometry or a light), or to a document object's
  // geometry; null when there is none or the object is null. The object keeps ownership.
  static CKorvoUserData* Of(const ZK_Object* object);
  static CKorvoUserData* Of(const CTarsaObject* object);

  // No entries, identity transforms, copied with its object.
  CKorvoUserData();
  CKorvoUserData(const CKorvoUserData& source);
  CKorvoUserData& operator=(const CKorvoUserData& source);
  ~CKorvoUserData() override;

  const ZK_ClassId* ClassId() const override;
  // True and this record becomes a copy when `source` is a placement record; else false and no
  // change.
  bool CopyFrom(const ZK_Object* source) override;
  // A new copy, owned by the caller.
  ZK_Object* __DeepCopy() const override;
  bool Write(ZK_BinaryArchive& archive) const override;
  // Reads into a newly created record. A record of a newer version is refused without reading
  // further. False when a read failed; entries read before the failure stay.
  bool Read(ZK_BinaryArchive& archive) override;
  bool GetDescription(ZK_wString& description) override;
  bool Archive() const override;
  // The record with its entries, for the host's count of what its undo keeps.
  unsigned int SizeOf() const override;
  // accumulated = xform * accumulated, last = xform (last unchanged while a LastXformTakenOut
  // lives), unless the base refuses the transform (false, nothing changes).
  bool Transform(const ZK_Xform& xform) override;

  // A guard for a move of the plug-in's own, whose mover makes the moved record's last transform
  // the identity at once (a restore's): while one lives, Transform leaves every record's last
  // transform as it was, so that no room is taken for it only to be given back. Guards nest.
  class LastXformTakenOut {
   public:
    LastXformTakenOut() { ++s_depth; }
    ~LastXformTakenOut() { --s_depth; }
    LastXformTakenOut(const LastXformTakenOut&) = delete;
    LastXformTakenOut& operator=(const LastXformTakenOut&) = delete;

   private:
    friend class CKorvoUserData;
    static int s_depth;
  };

  bool HasEntry(const ZK_UUID& id) const;
  // True and `xform` receives the saved transform when the stance has an entry.
  bool GetXform(const ZK_UUID& id, ZK_Xform& xform) const;
  // The saved transform of the stance, inside the record and valid until the record next
  // changes; null when the stance has no entry.
  const ZK_Xform* FindXform(const ZK_UUID& id) const;
  // True when the stance had an entry, which now holds `xform`; false and no change otherwise.
  bool SetXform(const ZK_UUID& id, const ZK_Xform& xform);
  // The entry at `index` (0 to m_entries.GetSize() - 1) in storage of this record's own, to be
  // changed in place; valid until the record next changes.
  USER_DATA& EditableEntry(int index) { return m_entries.Editable()[index]; }
  // Appends an entry; callers test HasEntry first, since the record keeps one entry per stance.
  void Add(const ZK_UUID& id, const ZK_Xform& xform);
  // Replaces every entry by the `count` entries at `entries` (outside this record), in their
  // order: for a caller that rearranges many entries of a record at once.
  void SetEntries(const USER_DATA* entries, int count) { m_entries.Assign(entries, count); }
  // True when the stance's entry was removed; the others keep their order.
  bool Remove(const ZK_UUID& id);
  void RemoveAll();
  // Keeps, in their order, the entries for which `keep(const USER_DATA&)` is true; a record that
  // keeps every entry is not changed at all.
  template <class Keep>
  void KeepEntries(Keep keep);

  Entries m_entries;
  ZK_Xform m_accumulated_xform;
  CKorvoSparseXform m_last_xform;

 private:
  void SetIdentity();
  int IndexOf(const ZK_UUID& id) const;
  // Room for the `count` entries a read announces, as far as `bytes_left` can hold them.
  void ReserveForRead(int count, size_t bytes_left);
};

template <class Keep>
void CKorvoUserData::KeepEntries(Keep keep) {
  const int count = static_cast<int>(m_entries.GetSize());
  int kept = 0;
  while (kept < count && keep(*m_entries[kept])) ++kept;
  if (kept == count) return;
  USER_DATA* entries = m_entries.Editable();
  for (int i = kept + 1; i < count; ++i) {
    if (keep(entries[i])) entries[kept++] = entries[i];
  }
  m_entries.Truncate(kept);
}
