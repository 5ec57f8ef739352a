#include "host/tarsa/tarsa_object.h"

#include "host/tarsa/tarsa_doc.h"

namespace {

ZK_Object* CreateNothing() { return nullptr; }

const ZK_ClassId g_object_class("CTarsaObject", "ZK_Object", CreateNothing,
                                "5B3C4E2F-8A61-4D7E-9C05-1F2A3B4C5D6E");
const ZK_ClassId g_light_class("CTarsaLight", "CTarsaObject", CreateNothing,
                               "9D8E7F60-1A2B-4C3D-8E4F-5A6B7C8D9E0F");

unsigned int NextObjectSerialNumber() {
  static unsigned int next = 0;
  return ++next;
}

}  // namespace

CTarsaObject* CTarsaObject::Cast(ZK_Object* object) {
  return object && object->IsKindOf(&g_object_class) ? static_cast<CTarsaObject*>(object) : nullptr;
}

const CTarsaObject* CTarsaObject::Cast(const ZK_Object* object) {
  return Cast(const_cast<ZK_Object*>(object));
}

CTarsaObject::CTarsaObject(ZK_Geometry* geometry, const CTarsaObjectAttributes& attributes)
    : m_geometry(geometry), m_attributes(attributes), m_serial_number(NextObjectSerialNumber()) {}

CTarsaObject::CTarsaObject(const CTarsaObject& source)
    : ZK_Object(source),
      m_geometry(ZK_Geometry::Cast(source.m_geometry->__DeepCopy())),
      m_attributes(source.m_attributes),
      m_history(source.m_history ? new CTarsaHistoryRecord(*source.m_history) : nullptr),
      m_serial_number(NextObjectSerialNumber()) {}

CTarsaObject::~CTarsaObject() { delete m_geometry; }

const ZK_ClassId* CTarsaObject::ClassId() const { return &g_object_class; }

ZK_Object* CTarsaObject::__DeepCopy() const { return new CTarsaObject(*this); }

unsigned int CTarsaObject::ObjectType() const { return m_geometry->ObjectType(); }

unsigned int CTarsaObject::SizeOf() const {
  return static_cast<unsigned int>(sizeof(*this)) + m_geometry->SizeOf();
}

CTarsaObject* CTarsaObject::Duplicate() const { return Cast(__DeepCopy()); }

bool CTarsaObject::SetAttributes(const CTarsaObjectAttributes& attributes) {
  if (m_doc != nullptr) return false;
  m_attributes = attributes;
  return true;
}

ZK_UserData* CTarsaObject::GetGeometryUserData(const ZK_UUID& userdata_uuid) const {
  return m_geometry->GetUserData(userdata_uuid);
}

bool CTarsaObject::AttachGeometryUserData(ZK_UserData* user_data) const {
  return m_geometry->AttachUserData(user_data);
}

CTarsaObject::object_state CTarsaObject::ObjectState() const {
  if (m_deleted) return deleted_object;
  switch (m_attributes.m_mode) {
    case TarsaObjectMode::locked:
      return locked_object;
    case TarsaObjectMode::hidden:
      return hidden_object;
    case TarsaObjectMode::normal:
      break;
  }
  return normal_object;
}

int CTarsaObject::Select(bool select, bool, bool persistent_select, bool) const {
  if (m_doc == nullptr || m_deleted) return 0;
  if (!select) {
    m_doc->SetSelection(*this, 0);
    return 1;
  }
  if (ObjectState() != normal_object) return 0;
  m_doc->SetSelection(*this, persistent_select ? 2 : 1);
  return 1;
}

bool CTarsaObject::SetHistoryRecord(CTarsaHistoryRecord* record) {
  if (m_doc != nullptr) {
    delete record;
    return false;
  }
  m_history.reset(record);
  return true;
}

CTarsaLight* CTarsaLight::Cast(ZK_Object* object) {
  return object && object->IsKindOf(&g_light_class) ? static_cast<CTarsaLight*>(object) : nullptr;
}

const CTarsaLight* CTarsaLight::Cast(const ZK_Object* object) {
  return Cast(const_cast<ZK_Object*>(object));
}

CTarsaLight::CTarsaLight(const ZK_Light& light, const CTarsaObjectAttributes& attributes)
    : CTarsaObject(new ZK_Light(light), attributes) {}

CTarsaLight::CTarsaLight(ZK_Light* light, const CTarsaObjectAttributes& attributes)
    : CTarsaObject(light, attributes) {}

const ZK_ClassId* CTarsaLight::ClassId() const { return &g_light_class; }

ZK_Object* CTarsaLight::__DeepCopy() const { return new CTarsaLight(*this); }

const ZK_Light& CTarsaLight::Light() const { return *ZK_Light::Cast(Geometry()); }
