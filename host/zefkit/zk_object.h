// The kernel's object model: ZK_ClassId (a registered class, found by name or class uuid so that
// the archive can re-create objects), ZK_Object (the base of every kernel object, carrying a list
// of user data) and ZK_UserData (data of an application attached to an object, found by its
// user-data id, owned by the object, copied, transformed, written and read with it).
#pragma once

#include "host/zefkit/zk_string.h"
#include "host/zefkit/zk_uuid.h"
#include "host/zefkit/zk_xform.h"

class ZK_BinaryArchive;
class ZK_Object;
class ZK_UserData;

class ZK_ClassId {
 public:
  // Registers a class. `create` makes a default-constructed instance (null for abstract classes);
  // `uuid` is the class uuid's text. A registration lives until it is destroyed.
  ZK_ClassId(const char* class_name, const char* base_class_name, ZK_Object* (*create)(),
             const char* uuid);
  ~ZK_ClassId();
  ZK_ClassId(const ZK_ClassId&) = delete;
  ZK_ClassId& operator=(const ZK_ClassId&) = delete;

  // The registration with that class uuid or name, or null.
  static const ZK_ClassId* ClassId(const ZK_UUID& uuid);
  static const ZK_ClassId* ClassId(const char* class_name);

  const char* ClassName() const { return m_class_name; }
  const char* BaseClassName() const { return m_base_class_name; }
  const ZK_UUID& Uuid() const { return m_uuid; }
  // The base class's registration, or null at the root or when the base is not registered.
  const ZK_ClassId* BaseClass() const;
  // True when this class is `other` or derives from it.
  bool IsDerivedFrom(const ZK_ClassId* other) const;
  // A new default-constructed instance owned by the caller, or null for an abstract class.
  ZK_Object* Create() const;

 private:
  const char* m_class_name;
  const char* m_base_class_name;
  ZK_Object* (*m_create)();
  ZK_UUID m_uuid;
  // The base class's registration as last looked up by name, and the registry's state then:
  // casts walk the bases by pointer without looking names up again.
  mutable const ZK_ClassId* m_base = nullptr;
  mutable unsigned long m_base_generation = ~0ul;
};

class ZK_Object {
 public:
  ZK_Object() = default;
  // Copies carry copies of every piece of user data whose copy count is 1 or more.
  ZK_Object(const ZK_Object& source);
  ZK_Object& operator=(const ZK_Object& source);

  virtual const ZK_ClassId* ClassId() const;
  // Makes this object a copy of `source` when it is of a compatible class: true, else false and
  // no change.
  virtual bool CopyFrom(const ZK_Object* source);
  // A new copy of this object owned by the caller, or null when the class cannot copy itself.
  virtual ZK_Object* __DeepCopy() const;
  virtual ~ZK_Object();
  // Called once the object has been moved to another address; the base has nothing to fix.
  virtual void MemoryRelocate();
  virtual bool IsValid() const;
  // Appends a line describing the object for diagnostics; the base gives its class name.
  virtual void Dump(ZK_wString& text) const;
  // The bytes the object uses: the base counts itself and the SizeOf of each piece of its user
  // data.
  virtual unsigned int SizeOf() const;
  // Continues the CRC-32 `crc` (0 to start) over the bytes Write gives: equal data, equal value.
  // User data is not included. `crc` itself when Write fails.
  virtual unsigned int DataCRC(unsigned int crc) const;
  // Write and Read hold the class's own fields; user data is written by the archive.
  virtual bool Write(ZK_BinaryArchive& archive) const;
  virtual bool Read(ZK_BinaryArchive& archive);
  virtual unsigned int ObjectType() const;
  virtual ZK_UUID ModelObjectId() const;
  // Frees what the object computes and keeps only for speed; the base keeps nothing.
  virtual void DestroyRuntimeCache(bool delete_cache = true);

  // Inline, with the exact class first: most casts name the object's own class, and settle
  // without a call or a walk up the chain.
  bool IsKindOf(const ZK_ClassId* class_id) const {
    const ZK_ClassId* own = ClassId();
    return own != nullptr && (own == class_id || own->IsDerivedFrom(class_id));
  }

  // Takes ownership of `user_data` and appends it to this object's list. False (ownership stays
  // with the caller) for null, for user data already attached somewhere, for a nil user-data id,
  // and when this object already carries user data with that id.
  bool AttachUserData(ZK_UserData* user_data);
  // Gives ownership of attached user data back to the caller: false when it is not this object's.
  bool DetachUserData(ZK_UserData* user_data);
  // This object's user data with that user-data id, or null; the object keeps ownership.
  ZK_UserData* GetUserData(const ZK_UUID& userdata_uuid) const;
  ZK_UserData* FirstUserData() const { return m_userdata_list; }
  void PurgeUserData();
  // Hands `xform` to every piece of user data: true when every Transform succeeded.
  bool TransformUserData(const ZK_Xform& xform);

 private:
  void CopyUserData(const ZK_Object& source);

  ZK_UserData* m_userdata_list = nullptr;
};

class ZK_UserData : public ZK_Object {
 public:
  static ZK_UserData* Cast(ZK_Object* object);
  static const ZK_UserData* Cast(const ZK_Object* object);

  ZK_UserData() = default;
  // Copies the ids, the copy count and the transform; the copy is attached to nothing.
  ZK_UserData(const ZK_UserData& source);
  ZK_UserData& operator=(const ZK_UserData& source);
  ~ZK_UserData() override;  // detaches from its owner first

  const ZK_ClassId* ClassId() const override;

  virtual bool GetDescription(ZK_wString& description);
  // True when the archive writes this user data with its object. The base says false.
  virtual bool Archive() const;
  // Asked by `archive` as it writes `parent`: true to write this user data with it. The base
  // gives Archive().
  virtual bool WriteToArchive(const ZK_BinaryArchive& archive, const ZK_Object* parent) const;
  // Asked by `archive` once it has written `parent`: true, and the archive deletes this user data
  // (data that exists only to be saved). The base says false.
  virtual bool DeleteAfterWrite(const ZK_BinaryArchive& archive, const ZK_Object* parent) const;
  // Asked by `archive` when it has read this user data for `parent`: true, and the archive
  // deletes it instead of attaching it (data that only converts the file). The base says false.
  virtual bool DeleteAfterRead(const ZK_BinaryArchive& archive, ZK_Object* parent) const;
  // Called by the kernel with every transform of the object that carries the user data. The base
  // multiplies it into m_userdata_xform and returns true.
  virtual bool Transform(const ZK_Xform& xform);

  ZK_Object* Owner() const { return m_userdata_owner; }
  ZK_UserData* Next() const { return m_userdata_next; }

  ZK_UUID m_userdata_uuid = ZK_nil_uuid;     // which user data of an object this is
  ZK_UUID m_application_uuid = ZK_nil_uuid;  // the plug-in that made it
  int m_userdata_copycount = 0;              // 0: not copied with its object
  ZK_Xform m_userdata_xform;                 // product of every transform applied

 private:
  friend class ZK_Object;
  ZK_Object* m_userdata_owner = nullptr;
  ZK_UserData* m_userdata_next = nullptr;
};
