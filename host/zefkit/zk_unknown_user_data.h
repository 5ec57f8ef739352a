// ZK_UnknownUserData: user data that the archive read with an object but could not re-create,
// because its class is not registered here or its Read failed (data of a newer version, say). It
// holds the bytes as they were read, so that nothing is lost: it stays with its object, is copied
// with it as the original would have been, and the archive writes it back unchanged. Nothing can
// read its content; the object that carries it owns it, like any user data.
#pragma once

#include <vector>

#include "host/zefkit/zk_object.h"

class ZK_UnknownUserData : public ZK_UserData {
 public:
  static const ZK_UnknownUserData* Cast(const ZK_Object* object);

  // `bytes` is the body of the chunk the archive read after the class uuid
  // (docs/archive_format.md); the archive sets the ids and the copy count read from it.
  ZK_UnknownUserData(const ZK_UUID& class_uuid, std::vector<unsigned char> bytes);

  const ZK_ClassId* ClassId() const override;
  // A new copy, owned by the caller.
  ZK_Object* __DeepCopy() const override;
  // Written back, whatever the original said, since it was read from an archive.
  bool Archive() const override;

  // The class uuid it was written under, and its body as read.
  const ZK_UUID& StoredClassUuid() const { return m_class_uuid; }
  const std::vector<unsigned char>& Bytes() const { return m_bytes; }

 private:
  ZK_UUID m_class_uuid;
  std::vector<unsigned char> m_bytes;
};
