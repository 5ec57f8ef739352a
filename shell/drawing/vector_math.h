// The little vector algebra the drawing needs, with no toolkit: points and directions in three
// dimensions, rotations as unit quaternions, and the spherical interpolation between two
// rotations that a glide turns by.
#pragma once

#include <cmath>

struct TsVec3 {
  double x = 0, y = 0, z = 0;

  TsVec3 operator+(const TsVec3& o) const { return {x + o.x, y + o.y, z + o.z}; }
  TsVec3 operator-(const TsVec3& o) const { return {x - o.x, y - o.y, z - o.z}; }
  TsVec3 operator-() const { return {-x, -y, -z}; }
  TsVec3 operator*(double s) const { return {x * s, y * s, z * s}; }
  TsVec3& operator+=(const TsVec3& o) {
    x += o.x;
    y += o.y;
    z += o.z;
    return *this;
  }
  bool operator==(const TsVec3& o) const { return x == o.x && y == o.y && z == o.z; }
  bool operator!=(const TsVec3& o) const { return !(*this == o); }
};

inline double Dot(const TsVec3& a, const TsVec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline TsVec3 Cross(const TsVec3& a, const TsVec3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double Length(const TsVec3& v) { return std::sqrt(Dot(v, v)); }
// The direction of `v`, or the zero vector when it has no length.
inline TsVec3 Normalized(const TsVec3& v) {
  const double length = Length(v);
  return length > 0 ? v * (1 / length) : TsVec3{};
}
inline TsVec3 Lerp(const TsVec3& a, const TsVec3& b, double t) { return a + (b - a) * t; }

// A rotation as a unit quaternion w + xi + yj + zk.
struct TsQuat {
  double w = 1, x = 0, y = 0, z = 0;

  // The rotation by `radians` about `axis` (any length but 0), right-handed.
  static TsQuat AxisAngle(const TsVec3& axis, double radians) {
    const TsVec3 a = ::Normalized(axis);
    const double s = std::sin(radians / 2);
    return {std::cos(radians / 2), a.x * s, a.y * s, a.z * s};
  }
  // The rotation whose matrix has these rows (an orthonormal, right-handed basis): it maps
  // `row0` to the x axis, `row1` to y and `row2` to z.
  static TsQuat FromRows(const TsVec3& row0, const TsVec3& row1, const TsVec3& row2);

  // This rotation after `o`: (a * b) turns by b first.
  TsQuat operator*(const TsQuat& o) const {
    return {w * o.w - x * o.x - y * o.y - z * o.z, w * o.x + x * o.w + y * o.z - z * o.y,
            w * o.y - x * o.z + y * o.w + z * o.x, w * o.z + x * o.y - y * o.x + z * o.w};
  }
  TsQuat Inverse() const { return {w, -x, -y, -z}; }
  TsQuat Normalized() const {
    const double n = std::sqrt(w * w + x * x + y * y + z * z);
    return n > 0 ? TsQuat{w / n, x / n, y / n, z / n} : TsQuat{};
  }
  TsVec3 Rotate(const TsVec3& v) const {
    // v + 2w (q × v) + 2 q × (q × v), q the vector part.
    const TsVec3 q{x, y, z};
    const TsVec3 t = Cross(q, v) * 2;
    return v + t * w + Cross(q, t);
  }
  // The angle turned by, in radians, from 0 to pi.
  double Angle() const { return 2 * std::acos(std::fmin(1.0, std::fabs(w))); }
};

inline TsQuat TsQuat::FromRows(const TsVec3& r0, const TsVec3& r1, const TsVec3& r2) {
  // The matrix m[i][j] with rows r0, r1, r2; Shepperd's method picks the largest divisor.
  const double m00 = r0.x, m01 = r0.y, m02 = r0.z;
  const double m10 = r1.x, m11 = r1.y, m12 = r1.z;
  const double m20 = r2.x, m21 = r2.y, m22 = r2.z;
  const double trace = m00 + m11 + m22;
  TsQuat q;
  if (trace > 0) {
    const double s = std::sqrt(trace + 1) * 2;
    q = {s / 4, (m21 - m12) / s, (m02 - m20) / s, (m10 - m01) / s};
  } else if (m00 > m11 && m00 > m22) {
    const double s = std::sqrt(1 + m00 - m11 - m22) * 2;
    q = {(m21 - m12) / s, s / 4, (m01 + m10) / s, (m02 + m20) / s};
  } else if (m11 > m22) {
    const double s = std::sqrt(1 + m11 - m00 - m22) * 2;
    q = {(m02 - m20) / s, (m01 + m10) / s, s / 4, (m12 + m21) / s};
  } else {
    const double s = std::sqrt(1 + m22 - m00 - m11) * 2;
    q = {(m10 - m01) / s, (m02 + m20) / s, (m12 + m21) / s, s / 4};
  }
  return q.Normalized();
}

// The rotation a fraction `t` of the way from `a` to `b` along the shorter great arc, at a
// steady angular speed.
inline TsQuat Slerp(const TsQuat& a, TsQuat b, double t) {
  double cosine = a.w * b.w + a.x * b.x + a.y * b.y + a.z * b.z;
  if (cosine < 0) {  // q and -q are the same rotation: take the nearer one
    b = {-b.w, -b.x, -b.y, -b.z};
    cosine = -cosine;
  }
  double wa = 1 - t, wb = t;
  if (cosine < 0.9995) {
    const double angle = std::acos(cosine);
    const double s = std::sin(angle);
    wa = std::sin((1 - t) * angle) / s;
    wb = std::sin(t * angle) / s;
  }
  return TsQuat{wa * a.w + wb * b.w, wa * a.x + wb * b.x, wa * a.y + wb * b.y, wa * a.z + wb * b.z}
      .Normalized();
}
