// A glide: an object shown moving from where it was drawn to where it is, over a short time. A
// rigid move (the same shape, turned and shifted) glides with its centre on a straight line and
// its turn by spherical interpolation of quaternions; any other change (a scale, a mirror, a
// changed shape) moves each point straight to its new place.
#pragma once

#include <vector>

#include "shell/drawing/vector_math.h"

// How long a glide lasts, in seconds.
constexpr double kTsGlideSeconds = 0.4;

// The rotation and translation that take every point of `from` to the point of `to` at the same
// index, within `tolerance`: false when no rigid move does (or the counts differ).
bool TsRigidMove(const std::vector<TsVec3>& from, const std::vector<TsVec3>& to, double tolerance,
                 TsQuat& rotation, TsVec3& translation);

class TsGlide {
 public:
  TsGlide() = default;
  // From the points an object was drawn through to the points it has now, index by index.
  TsGlide(std::vector<TsVec3> from, std::vector<TsVec3> to);

  // The points a fraction `t` (0 to 1) of the way; `points` is resized to fit.
  void At(double t, std::vector<TsVec3>& points) const;
  bool Rigid() const { return m_rigid; }
  const TsQuat& Rotation() const { return m_rotation; }
  const std::vector<TsVec3>& To() const { return m_to; }

 private:
  std::vector<TsVec3> m_from, m_to;
  bool m_rigid = false;
  TsQuat m_rotation;
  TsVec3 m_centre_from, m_centre_to;
};
