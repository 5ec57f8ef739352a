// CKorvoUserData: the placement record, kernel user data on the geometry of every object that
// takes part in a stance. The kernel hands it every transform applied to the geometry, which it
// multiplies into its accumulated transform; for each stance of the object it keeps the
// accumulated transform as it was when the stance was saved or updated. The object that carries
// the record owns it: the kernel copies, transforms, writes, reads and destroys it with the object.
#pragma once

#include <memory>

#include "data/stance_id_set.h"
#include "host/platform/c_array.h"
#include "host/zefkit/zk_archive.h"
#include "host/zefkit/zk_object.h"

class CTarsaDoc;
class CTarsaObject;

class CKorvoUserData : public ZK_UserData {
 public:
  struct USER_DATA {
    ZK_UUID m_id;      // the stance
    ZK_Xform m_xform;  // the accumulated transform when the stance was saved or updated
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
  // accumulated = xform * accumulated, last = xform, unless the base refuses the transform (false,
  // nothing changes).
  bool Transform(const ZK_Xform& xform) override;

  bool HasEntry(const ZK_UUID& id) const;
  // True and `xform` receives the saved transform when the stance has an entry.
  bool GetXform(const ZK_UUID& id, ZK_Xform& xform) const;
  // The saved transform of the stance, inside the record and valid until the record next
  // changes; null when the stance has no entry.
  const ZK_Xform* FindXform(const ZK_UUID& id) const;
  // True when the stance had an entry, which now holds `xform`; false and no change otherwise.
  bool SetXform(const ZK_UUID& id, const ZK_Xform& xform);
  // Appends an entry; callers test HasEntry first, since the record keeps one entry per stance.
  void Add(const ZK_UUID& id, const ZK_Xform& xform);
  // True when the stance's entry was removed; the others keep their order.
  bool Remove(const ZK_UUID& id);
  void RemoveAll();
  // Removes the entries whose stance is not in the document's table; the others keep their order.
  void RemoveEntriesWithoutStance(CTarsaDoc& doc);
  // The same against the ids of a table gathered once, for a clean-up of many records.
  void RemoveEntriesWithoutStance(const CKorvoStanceIdSet& known);

  // Points into the record's own entry storage, in the record's entry order.
  CArray<USER_DATA*, USER_DATA*> m_entries;
  ZK_Xform m_accumulated_xform;
  ZK_Xform m_last_xform;

 private:
  void SetIdentity();
  int IndexOf(const ZK_UUID& id) const;
  // Moves the entries, in order, into new storage with room for at least `capacity`; the slots
  // of removed entries are left behind.
  void Regrow(int capacity);
  // Room for the `count` entries a read announces, as far as `bytes_left` can hold them.
  void ReserveForRead(int count, size_t bytes_left);

  // The entries live in one block that the record owns, so that a copy of a record costs one
  // allocation for its entries, however many there are. The slot of the entry removed last is
  // the next Add's, so that replacing an entry (an import gives each a new id) takes no room;
  // other removed entries' slots stay unused until the block is next regrown. m_entries keeps the
  // order; the slots need not follow it.
  std::unique_ptr<USER_DATA[]> m_storage;
  int m_storage_capacity = 0;
  int m_storage_used = 0;
  int m_free_slot = -1;  // the slot of the entry removed last, or -1
};
