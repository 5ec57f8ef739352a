#include "host/zefkit/zk_light.h"

#include <cmath>

#include "host/zefkit/zk_archive.h"

namespace {

ZK_Object* CreateLight() { return new ZK_Light(); }

const ZK_ClassId g_light_class("ZK_Light", "ZK_Geometry", CreateLight,
                               "85A08513-F383-11d3-BFE7-0010830122F0");

bool IsFinite(const ZK_3dPoint& p) {
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

}  // namespace

ZK_Light* ZK_Light::Cast(ZK_Object* object) {
  return object && object->IsKindOf(&g_light_class) ? static_cast<ZK_Light*>(object) : nullptr;
}

const ZK_Light* ZK_Light::Cast(const ZK_Object* object) {
  return Cast(const_cast<ZK_Object*>(object));
}

const ZK_ClassId* ZK_Light::ClassId() const { return &g_light_class; }

bool ZK_Light::CopyFrom(const ZK_Object* source) {
  const ZK_Light* light = Cast(source);
  if (light == nullptr) return false;
  *this = *light;
  return true;
}

ZK_Object* ZK_Light::__DeepCopy() const { return new ZK_Light(*this); }

bool ZK_Light::IsValid() const {
  const ZK_3dPoint direction{m_direction.x, m_direction.y, m_direction.z};
  return IsFinite(m_location) && IsFinite(direction) && std::isfinite(m_intensity);
}

bool ZK_Light::Write(ZK_BinaryArchive& archive) const {
  return archive.WritePoint(m_location) &&
         archive.WritePoint({m_direction.x, m_direction.y, m_direction.z}) &&
         archive.WriteDouble(m_intensity);
}

bool ZK_Light::Read(ZK_BinaryArchive& archive) {
  ZK_3dPoint location, direction;
  double intensity = 0.0;
  if (!archive.ReadPoint(location) || !archive.ReadPoint(direction) ||
      !archive.ReadDouble(intensity)) {
    return false;
  }
  m_location = location;
  m_direction = {direction.x, direction.y, direction.z};
  m_intensity = intensity;
  return true;
}

bool ZK_Light::GetBBox(ZK_3dPoint& min, ZK_3dPoint& max) const {
  min = m_location;
  max = m_location;
  return true;
}

bool ZK_Light::TransformShape(const ZK_Xform& xform) {
  m_location = xform * m_location;
  m_direction = xform * m_direction;
  return true;
}
