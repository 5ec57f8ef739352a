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

 protected:
  virtual bool TransformShape(const ZK_Xform& xform) = 0;
};
