// ZK_Light: the kernel's light, a point in space shining along a direction. The host keeps its
// lights in a light table; m_light_index is the light's place there, negative when it is in none.
#pragma once

#include "host/zefkit/zk_geometry.h"

class ZK_Light : public ZK_Geometry {
 public:
  static constexpr unsigned int kObjectType = 256;

  static ZK_Light* Cast(ZK_Object* object);
  static const ZK_Light* Cast(const ZK_Object* object);

  const ZK_ClassId* ClassId() const override;
  bool CopyFrom(const ZK_Object* source) override;
  ZK_Object* __DeepCopy() const override;
  bool IsValid() const override;
  // Writes location, direction and intensity; the light index belongs to the table, not the file.
  bool Write(ZK_BinaryArchive& archive) const override;
  bool Read(ZK_BinaryArchive& archive) override;
  unsigned int ObjectType() const override { return kObjectType; }
  // The box of the light's location alone.
  bool GetBBox(ZK_3dPoint& min, ZK_3dPoint& max) const override;

  ZK_3dPoint m_location;
  ZK_3dVector m_direction{0.0, 0.0, -1.0};
  double m_intensity = 1.0;
  int m_light_index = -1;

 protected:
  bool TransformShape(const ZK_Xform& xform) override;
};
