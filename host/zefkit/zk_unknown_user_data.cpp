#include "host/zefkit/zk_unknown_user_data.h"

#include <utility>

namespace {

ZK_Object* CreateNothing() { return nullptr; }

// Never written under this uuid: the archive writes the stored class uuid instead.
const ZK_ClassId g_unknown_class("ZK_UnknownUserData", "ZK_UserData", CreateNothing,
                                 "2F0D4B8E-9C61-4A7B-B3E5-D81C6F0A2E97");

}  // namespace

const ZK_UnknownUserData* ZK_UnknownUserData::Cast(const ZK_Object* object) {
  return object && object->IsKindOf(&g_unknown_class)
             ? static_cast<const ZK_UnknownUserData*>(object)
             : nullptr;
}

ZK_UnknownUserData::ZK_UnknownUserData(const ZK_UUID& class_uuid, std::vector<unsigned char> bytes)
    : m_class_uuid(class_uuid), m_bytes(std::move(bytes)) {}

const ZK_ClassId* ZK_UnknownUserData::ClassId() const { return &g_unknown_class; }

ZK_Object* ZK_UnknownUserData::__DeepCopy() const { return new ZK_UnknownUserData(*this); }

bool ZK_UnknownUserData::Archive() const { return true; }
