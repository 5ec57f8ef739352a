#include "host/zefkit/standin/zk_point_geometry.h"

#include <algorithm>
#include <cmath>

#include "host/zefkit/zk_archive.h"

namespace {

ZK_Object* CreateNothing() { return nullptr; }
ZK_Object* CreatePoint() { return new ZK_Point(); }
ZK_Object* CreatePolyline() { return new ZK_Polyline(); }
ZK_Object* CreateBox() { return new ZK_Box(); }

const ZK_ClassId g_point_geometry_class("ZK_PointGeometry", "ZK_Geometry", CreateNothing,
                                        "3E4B8F2A-5C1D-4F60-9A7E-2B8C0D1E3F45");
const ZK_ClassId g_point_class("ZK_Point", "ZK_PointGeometry", CreatePoint,
                               "C3101A1D-F157-11d3-BFE7-0010830122F0");
const ZK_ClassId g_polyline_class("ZK_Polyline", "ZK_PointGeometry", CreatePolyline,
                                  "4ED7D4E6-E947-11d3-BFE5-0010830122F0");
const ZK_ClassId g_box_class("ZK_Box", "ZK_PointGeometry", CreateBox,
                             "7A2C6B94-1E3F-4D58-B0A9-5C7E8D2F1A36");

// A point takes three doubles in the archive.
constexpr size_t kPointSize = 3 * 8;

}  // namespace

ZK_PointGeometry* ZK_PointGeometry::Cast(ZK_Object* object) {
  return object && object->IsKindOf(&g_point_geometry_class)
             ? static_cast<ZK_PointGeometry*>(object)
             : nullptr;
}

const ZK_PointGeometry* ZK_PointGeometry::Cast(const ZK_Object* object) {
  return Cast(const_cast<ZK_Object*>(object));
}

const ZK_ClassId* ZK_PointGeometry::ClassId() const { return &g_point_geometry_class; }

bool ZK_PointGeometry::IsValid() const {
  if (!PointCountIsValid(m_points.size())) return false;
  for (const ZK_3dPoint& p : m_points) {
    if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z)) return false;
  }
  return true;
}

bool ZK_PointGeometry::Write(ZK_BinaryArchive& archive) const {
  if (!archive.WriteInt(static_cast<int>(m_points.size()))) return false;
  for (const ZK_3dPoint& p : m_points) {
    if (!archive.WritePoint(p)) return false;
  }
  return true;
}

bool ZK_PointGeometry::Read(ZK_BinaryArchive& archive) {
  int count = 0;
  if (!archive.ReadInt(count) || count < 0 || !PointCountIsValid(static_cast<size_t>(count))) {
    return false;
  }
  if (static_cast<size_t>(count) > archive.BytesLeft() / kPointSize) return false;
  std::vector<ZK_3dPoint> points(static_cast<size_t>(count));
  for (ZK_3dPoint& p : points) {
    if (!archive.ReadPoint(p)) return false;
  }
  m_points = std::move(points);
  return true;
}

bool ZK_PointGeometry::GetBBox(ZK_3dPoint& min, ZK_3dPoint& max) const {
  if (m_points.empty()) return false;
  min = max = m_points.front();
  for (const ZK_3dPoint& p : m_points) {
    min = {std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z)};
    max = {std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z)};
  }
  return true;
}

bool ZK_PointGeometry::TransformShape(const ZK_Xform& xform) {
  for (ZK_3dPoint& p : m_points) p = xform * p;
  return true;
}

const ZK_ClassId* ZK_Point::ClassId() const { return &g_point_class; }

const ZK_ClassId* ZK_Polyline::ClassId() const { return &g_polyline_class; }

ZK_Box::ZK_Box(const ZK_3dPoint& a, const ZK_3dPoint& b)
    : ZK_PointGeometry({{a.x, a.y, a.z},
                        {b.x, a.y, a.z},
                        {b.x, b.y, a.z},
                        {a.x, b.y, a.z},
                        {a.x, a.y, b.z},
                        {b.x, a.y, b.z},
                        {b.x, b.y, b.z},
                        {a.x, b.y, b.z}}) {}

const ZK_ClassId* ZK_Box::ClassId() const { return &g_box_class; }
