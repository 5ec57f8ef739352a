#include "host/zefkit/zk_object.h"

#include <cstring>
#include <vector>

#include "host/zefkit/standin/zk_testing.h"
#include "host/zefkit/zk_archive.h"
#include "host/zefkit/zk_crc32.h"

namespace {

std::vector<const ZK_ClassId*>& Registry() {
  static std::vector<const ZK_ClassId*> registry;
  return registry;
}

bool g_fail_userdata_transform = false;

// Changes with every registration and withdrawal, so that a cached base class is known stale.
unsigned long g_registry_generation = 0;

ZK_Object* CreateNothing() { return nullptr; }

const ZK_ClassId g_object_class("ZK_Object", "", CreateNothing,
                                "60B5DBBC-E660-11d3-BFE4-0010830122F0");
const ZK_ClassId g_userdata_class("ZK_UserData", "ZK_Object", CreateNothing,
                                  "850324A1-87E5-11d4-8E22-0010830122F0");

}  // namespace

// ZK_ClassId

ZK_ClassId::ZK_ClassId(const char* class_name, const char* base_class_name, ZK_Object* (*create)(),
                       const char* uuid)
    : m_class_name(class_name),
      m_base_class_name(base_class_name ? base_class_name : ""),
      m_create(create),
      m_uuid(ZK_UuidFromString(uuid)) {
  Registry().push_back(this);
  ++g_registry_generation;
}

ZK_ClassId::~ZK_ClassId() {
  auto& registry = Registry();
  for (auto it = registry.begin(); it != registry.end(); ++it) {
    if (*it == this) {
      registry.erase(it);
      break;
    }
  }
  ++g_registry_generation;
}

const ZK_ClassId* ZK_ClassId::ClassId(const ZK_UUID& uuid) {
  if (ZK_UuidIsNil(uuid)) return nullptr;
  for (const ZK_ClassId* id : Registry()) {
    if (id->m_uuid == uuid) return id;
  }
  return nullptr;
}

const ZK_ClassId* ZK_ClassId::ClassId(const char* class_name) {
  if (class_name == nullptr || *class_name == 0) return nullptr;
  for (const ZK_ClassId* id : Registry()) {
    if (std::strcmp(id->m_class_name, class_name) == 0) return id;
  }
  return nullptr;
}

const ZK_ClassId* ZK_ClassId::BaseClass() const {
  if (m_base_generation != g_registry_generation) {
    m_base = ClassId(m_base_class_name);
    m_base_generation = g_registry_generation;
  }
  return m_base;
}

bool ZK_ClassId::IsDerivedFrom(const ZK_ClassId* other) const {
  if (other == nullptr) return false;
  // Bounded, so that a registration naming itself as its base cannot loop.
  const ZK_ClassId* id = this;
  for (int depth = 0; id != nullptr && depth < 64; ++depth, id = id->BaseClass()) {
    if (id == other) return true;
  }
  return false;
}

ZK_Object* ZK_ClassId::Create() const { return m_create ? m_create() : nullptr; }

// ZK_Object

ZK_Object::ZK_Object(const ZK_Object& source) { CopyUserData(source); }

ZK_Object& ZK_Object::operator=(const ZK_Object& source) {
  if (this != &source) {
    PurgeUserData();
    CopyUserData(source);
  }
  return *this;
}

const ZK_ClassId* ZK_Object::ClassId() const { return &g_object_class; }

bool ZK_Object::CopyFrom(const ZK_Object*) { return false; }

ZK_Object* ZK_Object::__DeepCopy() const { return nullptr; }

ZK_Object::~ZK_Object() { PurgeUserData(); }

void ZK_Object::MemoryRelocate() {}

bool ZK_Object::IsValid() const { return true; }

void ZK_Object::Dump(ZK_wString& text) const {
  const ZK_ClassId* class_id = ClassId();
  text += ZK_wString::FromUtf8(class_id ? class_id->ClassName() : "?");
  text += L"\n";
}

unsigned int ZK_Object::SizeOf() const {
  unsigned int size = sizeof(ZK_Object);
  for (const ZK_UserData* ud = m_userdata_list; ud; ud = ud->m_userdata_next) size += ud->SizeOf();
  return size;
}

unsigned int ZK_Object::DataCRC(unsigned int crc) const {
  ZK_BinaryMemoryArchive archive;
  if (!Write(archive)) return crc;
  return ZK_CRC32(crc, archive.Bytes().size(), archive.Bytes().data());
}

bool ZK_Object::Write(ZK_BinaryArchive&) const { return true; }

bool ZK_Object::Read(ZK_BinaryArchive&) { return true; }

unsigned int ZK_Object::ObjectType() const { return 0; }

ZK_UUID ZK_Object::ModelObjectId() const { return ZK_nil_uuid; }

void ZK_Object::DestroyRuntimeCache(bool) {}

bool ZK_Object::AttachUserData(ZK_UserData* user_data) {
  if (user_data == nullptr || user_data->m_userdata_owner != nullptr) return false;
  if (user_data == this || ZK_UuidIsNil(user_data->m_userdata_uuid)) return false;
  if (GetUserData(user_data->m_userdata_uuid) != nullptr) return false;
  ZK_UserData** tail = &m_userdata_list;
  while (*tail) tail = &(*tail)->m_userdata_next;
  *tail = user_data;
  user_data->m_userdata_owner = this;
  user_data->m_userdata_next = nullptr;
  return true;
}

bool ZK_Object::DetachUserData(ZK_UserData* user_data) {
  if (user_data == nullptr || user_data->m_userdata_owner != this) return false;
  for (ZK_UserData** link = &m_userdata_list; *link; link = &(*link)->m_userdata_next) {
    if (*link == user_data) {
      *link = user_data->m_userdata_next;
      user_data->m_userdata_owner = nullptr;
      user_data->m_userdata_next = nullptr;
      return true;
    }
  }
  return false;
}

ZK_UserData* ZK_Object::GetUserData(const ZK_UUID& userdata_uuid) const {
  for (ZK_UserData* ud = m_userdata_list; ud; ud = ud->m_userdata_next) {
    if (ud->m_userdata_uuid == userdata_uuid) return ud;
  }
  return nullptr;
}

void ZK_Object::PurgeUserData() {
  while (ZK_UserData* ud = m_userdata_list) {
    DetachUserData(ud);
    delete ud;
  }
}

bool ZK_Object::TransformUserData(const ZK_Xform& xform) {
  bool all = true;
  for (ZK_UserData* ud = m_userdata_list; ud; ud = ud->m_userdata_next) {
    all = ud->Transform(xform) && all;
  }
  return all;
}

void ZK_Object::CopyUserData(const ZK_Object& source) {
  for (const ZK_UserData* ud = source.m_userdata_list; ud; ud = ud->m_userdata_next) {
    if (ud->m_userdata_copycount < 1) continue;
    ZK_Object* copy = ud->__DeepCopy();
    ZK_UserData* copied = ZK_UserData::Cast(copy);
    if (copied == nullptr || !AttachUserData(copied)) delete copy;
  }
}

// ZK_UserData

ZK_UserData* ZK_UserData::Cast(ZK_Object* object) {
  return object && object->IsKindOf(&g_userdata_class) ? static_cast<ZK_UserData*>(object)
                                                       : nullptr;
}

const ZK_UserData* ZK_UserData::Cast(const ZK_Object* object) {
  return Cast(const_cast<ZK_Object*>(object));
}

ZK_UserData::ZK_UserData(const ZK_UserData& source)
    : ZK_Object(source),
      m_userdata_uuid(source.m_userdata_uuid),
      m_application_uuid(source.m_application_uuid),
      m_userdata_copycount(source.m_userdata_copycount),
      m_userdata_xform(source.m_userdata_xform) {}

ZK_UserData& ZK_UserData::operator=(const ZK_UserData& source) {
  if (this != &source) {
    ZK_Object::operator=(source);
    m_userdata_uuid = source.m_userdata_uuid;
    m_application_uuid = source.m_application_uuid;
    m_userdata_copycount = source.m_userdata_copycount;
    m_userdata_xform = source.m_userdata_xform;
  }
  return *this;
}

ZK_UserData::~ZK_UserData() {
  if (m_userdata_owner) m_userdata_owner->DetachUserData(this);
}

const ZK_ClassId* ZK_UserData::ClassId() const { return &g_userdata_class; }

bool ZK_UserData::GetDescription(ZK_wString&) { return false; }

bool ZK_UserData::Archive() const { return false; }

bool ZK_UserData::WriteToArchive(const ZK_BinaryArchive&, const ZK_Object*) const {
  return Archive();
}

bool ZK_UserData::DeleteAfterWrite(const ZK_BinaryArchive&, const ZK_Object*) const {
  return false;
}

bool ZK_UserData::DeleteAfterRead(const ZK_BinaryArchive&, ZK_Object*) const { return false; }

bool ZK_UserData::Transform(const ZK_Xform& xform) {
  if (g_fail_userdata_transform) return false;
  m_userdata_xform = xform * m_userdata_xform;
  return true;
}

ZK_TestFailUserDataTransform::ZK_TestFailUserDataTransform()
    : m_previous(g_fail_userdata_transform) {
  g_fail_userdata_transform = true;
}

ZK_TestFailUserDataTransform::~ZK_TestFailUserDataTransform() {
  g_fail_userdata_transform = m_previous;
}

ZK_TestHideClass::ZK_TestHideClass(const ZK_ClassId& class_id)
    : m_class_id(class_id), m_hidden(false) {
  auto& registry = Registry();
  for (auto it = registry.begin(); it != registry.end(); ++it) {
    if (*it != &class_id) continue;
    registry.erase(it);
    m_hidden = true;
    ++g_registry_generation;
    break;
  }
}

ZK_TestHideClass::~ZK_TestHideClass() {
  if (!m_hidden) return;
  Registry().push_back(&m_class_id);
  ++g_registry_generation;
}
