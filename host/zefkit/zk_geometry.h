// ZK_Geometry: a kernel object with a shape in space. Transforming it moves its shape and hands
// the same transform to every piece of its user data.
#pragma once

#include "host/zefkit/zk_object.h"

class ZK_Geometry : public ZK_Object {
 public:
  static ZK_Geometry* Cast(ZK_Object* object);
  static const ZK_Geometry* Cast(const ZK_Object* object);

  const ZK_ClassId* ClassId() const override;

  // Transforms the shape (TransformShape), then the user data. False when the shape refused the
  // transform, in which case nothing changed; user data that fails its own Transform does not
  // stop the others or the shape.
  bool Transform(const ZK_Xform& xform);
  // The smallest axis-aligned box around the shape: true and its corners, or false (corners
  // unchanged) for a shape with no extent to measure.
  virtual bool GetBBox(ZK_3dPoint& min, ZK_3dPoint& max) const = 0;

 protected:
  virtual bool TransformShape(const ZK_Xform& xform) = 0;
};
