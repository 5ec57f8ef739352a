// The kernel's simple geometries, each a list of points: a point, a polyline and a box given by
// its eight corners. Transforming one maps every point; the host draws them as they are.
#pragma once

#include <vector>

#include "host/zefkit/zk_geometry.h"

class ZK_PointGeometry : public ZK_Geometry {
 public:
  static ZK_PointGeometry* Cast(ZK_Object* object);
  static const ZK_PointGeometry* Cast(const ZK_Object* object);

  const ZK_ClassId* ClassId() const override;
  bool IsValid() const override;
  // Writes the points; Read takes as many as the class holds (see PointCountIsValid).
  bool Write(ZK_BinaryArchive& archive) const override;
  bool Read(ZK_BinaryArchive& archive) override;

  const std::vector<ZK_3dPoint>& Points() const { return m_points; }
  // False when there are no points.
  bool GetBBox(ZK_3dPoint& min, ZK_3dPoint& max) const override;

 protected:
  ZK_PointGeometry() = default;
  explicit ZK_PointGeometry(std::vector<ZK_3dPoint> points) : m_points(std::move(points)) {}
  bool TransformShape(const ZK_Xform& xform) override;
  virtual bool PointCountIsValid(size_t count) const = 0;

  std::vector<ZK_3dPoint> m_points;
};

class ZK_Point : public ZK_PointGeometry {
 public:
  static constexpr unsigned int kObjectType = 1;
  ZK_Point() : ZK_PointGeometry({ZK_3dPoint{}}) {}
  explicit ZK_Point(const ZK_3dPoint& point) : ZK_PointGeometry({point}) {}
  const ZK_ClassId* ClassId() const override;
  ZK_Object* __DeepCopy() const override { return new ZK_Point(*this); }
  unsigned int ObjectType() const override { return kObjectType; }

 protected:
  bool PointCountIsValid(size_t count) const override { return count == 1; }
};

class ZK_Polyline : public ZK_PointGeometry {
 public:
  static constexpr unsigned int kObjectType = 4;
  ZK_Polyline() = default;
  explicit ZK_Polyline(std::vector<ZK_3dPoint> points) : ZK_PointGeometry(std::move(points)) {}
  const ZK_ClassId* ClassId() const override;
  ZK_Object* __DeepCopy() const override { return new ZK_Polyline(*this); }
  unsigned int ObjectType() const override { return kObjectType; }

 protected:
  bool PointCountIsValid(size_t count) const override { return count >= 2; }
};

class ZK_Box : public ZK_PointGeometry {
 public:
  static constexpr unsigned int kObjectType = 16;
  ZK_Box() : ZK_Box({0, 0, 0}, {1, 1, 1}) {}
  // The axis-aligned box with these opposite corners; corners 0-3 on the bottom, 4-7 on the top.
  ZK_Box(const ZK_3dPoint& a, const ZK_3dPoint& b);
  const ZK_ClassId* ClassId() const override;
  ZK_Object* __DeepCopy() const override { return new ZK_Box(*this); }
  unsigned int ObjectType() const override { return kObjectType; }

 protected:
  bool PointCountIsValid(size_t count) const override { return count == 8; }
};
