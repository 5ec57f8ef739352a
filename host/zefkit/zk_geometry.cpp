#include "host/zefkit/zk_geometry.h"

namespace {

ZK_Object* CreateNothing() { return nullptr; }

const ZK_ClassId g_geometry_class("ZK_Geometry", "ZK_Object", CreateNothing,
                                  "4ED7D4DA-E947-11d3-BFE5-0010830122F0");

}  // namespace

ZK_Geometry* ZK_Geometry::Cast(ZK_Object* object) {
  return object && object->IsKindOf(&g_geometry_class) ? static_cast<ZK_Geometry*>(object)
                                                       : nullptr;
}

const ZK_Geometry* ZK_Geometry::Cast(const ZK_Object* object) {
  return Cast(const_cast<ZK_Object*>(object));
}

const ZK_ClassId* ZK_Geometry::ClassId() const { return &g_geometry_class; }

bool ZK_Geometry::Transform(const ZK_Xform& xform) {
  if (!TransformShape(xform)) return false;
  TransformUserData(xform);
  return true;
}
