#include "shell/drawing/glide.h"

#include <algorithm>

namespace {

// An orthonormal frame of three rows from the first point and the first two directions of the
// points that span a plane; `found` says how many directions there were (0, 1 or 2).
struct Frame {
  TsVec3 rows[3];
  int found = 0;
};

Frame FrameOf(const std::vector<TsVec3>& p, size_t i1, size_t i2, double tolerance) {
  Frame f;
  if (i1 == 0) return f;
  f.rows[0] = Normalized(p[i1] - p[0]);
  f.found = 1;
  if (i2 == 0) return f;
  const TsVec3 b = p[i2] - p[0];
  const TsVec3 along = b - f.rows[0] * Dot(b, f.rows[0]);
  if (Length(along) <= tolerance) return f;
  f.rows[1] = Normalized(along);
  f.rows[2] = Cross(f.rows[0], f.rows[1]);
  f.found = 2;
  return f;
}

// The shortest turn that takes direction a to direction b (unit vectors).
TsQuat Arc(const TsVec3& a, const TsVec3& b) {
  const double c = Dot(a, b);
  if (c < -1 + 1e-12) {
    // Half a turn about any axis at right angles to a.
    TsVec3 axis = Cross(a, {1, 0, 0});
    if (Length(axis) < 1e-6) axis = Cross(a, {0, 1, 0});
    return TsQuat::AxisAngle(axis, 3.14159265358979323846);
  }
  const TsVec3 axis = Cross(a, b);
  return TsQuat{1 + c, axis.x, axis.y, axis.z}.Normalized();
}

}  // namespace

bool TsRigidMove(const std::vector<TsVec3>& from, const std::vector<TsVec3>& to, double tolerance,
                 TsQuat& rotation, TsVec3& translation) {
  if (from.size() != to.size() || from.empty()) return false;
  // The first point apart from the first, and the first off the line through both.
  size_t i1 = 0, i2 = 0;
  for (size_t i = 1; i < from.size() && i1 == 0; ++i) {
    if (Length(from[i] - from[0]) > tolerance) i1 = i;
  }
  if (i1 != 0) {
    const TsVec3 u = Normalized(from[i1] - from[0]);
    for (size_t i = i1 + 1; i < from.size() && i2 == 0; ++i) {
      const TsVec3 b = from[i] - from[0];
      if (Length(b - u * Dot(b, u)) > tolerance) i2 = i;
    }
  }
  const Frame a = FrameOf(from, i1, i2, tolerance);
  const Frame b = FrameOf(to, i1, i2, tolerance);
  if (a.found != b.found) return false;
  if (a.found == 0) {
    rotation = TsQuat();
  } else if (a.found == 1) {
    rotation = Arc(a.rows[0], b.rows[0]);
  } else {
    // R = B^T A: takes a's rows to b's.
    TsVec3 r[3];
    for (int i = 0; i < 3; ++i) {
      const auto component = [i](const TsVec3& v) { return i == 0 ? v.x : i == 1 ? v.y : v.z; };
      r[i] = a.rows[0] * component(b.rows[0]) + a.rows[1] * component(b.rows[1]) +
             a.rows[2] * component(b.rows[2]);
    }
    rotation = TsQuat::FromRows(r[0], r[1], r[2]);
  }
  translation = to[0] - rotation.Rotate(from[0]);
  for (size_t i = 0; i < from.size(); ++i) {
    if (Length(rotation.Rotate(from[i]) + translation - to[i]) > tolerance) return false;
  }
  return true;
}

TsGlide::TsGlide(std::vector<TsVec3> from, std::vector<TsVec3> to)
    : m_from(std::move(from)), m_to(std::move(to)) {
  if (m_from.size() != m_to.size()) {
    m_from = m_to;  // nothing to glide between: shown where it is
    return;
  }
  double size = 0;
  for (const TsVec3& p : m_from) size = std::max(size, Length(p - m_from[0]));
  TsVec3 translation;
  m_rigid = TsRigidMove(m_from, m_to, 1e-6 * (size + 1), m_rotation, translation);
  if (!m_rigid || m_from.empty()) return;
  TsVec3 sum;
  for (const TsVec3& p : m_from) sum += p;
  m_centre_from = sum * (1.0 / m_from.size());
  m_centre_to = m_rotation.Rotate(m_centre_from) + translation;
}

void TsGlide::At(double t, std::vector<TsVec3>& points) const {
  t = std::clamp(t, 0.0, 1.0);
  points.resize(m_to.size());
  if (t >= 1) {
    std::copy(m_to.begin(), m_to.end(), points.begin());
    return;
  }
  if (!m_rigid) {
    for (size_t i = 0; i < m_to.size(); ++i) points[i] = Lerp(m_from[i], m_to[i], t);
    return;
  }
  const TsQuat turn = Slerp(TsQuat(), m_rotation, t);
  const TsVec3 centre = Lerp(m_centre_from, m_centre_to, t);
  for (size_t i = 0; i < m_to.size(); ++i)
    points[i] = centre + turn.Rotate(m_from[i] - m_centre_from);
}
