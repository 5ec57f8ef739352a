// ZK_Xform: the kernel's 4x4 transformation matrix of doubles, with the points and vectors it
// maps. Values; the row-major element m_xform[row][column] acts on column vectors, so in a
// product A * B the transform B applies first.
#pragma once

struct ZK_3dPoint {
  double x = 0.0, y = 0.0, z = 0.0;
};

struct ZK_3dVector {
  double x = 0.0, y = 0.0, z = 0.0;
};

class ZK_Xform {
 public:
  // Inline: records and commands make transforms by the million, and a call into the kernel
  // library for sixteen stores would cost more than the stores.
  ZK_Xform() : ZK_Xform(1.0) {}  // identity
  explicit ZK_Xform(double diagonal)
      : m_xform{
            {diagonal, 0, 0, 0}, {0, diagonal, 0, 0}, {0, 0, diagonal, 0}, {0, 0, 0, diagonal}} {}

  static ZK_Xform Translation(double dx, double dy, double dz);
  static ZK_Xform Scale(double sx, double sy, double sz);
  // Rotation by `radians` about the axis through `center` with direction `axis` (any length but 0).
  static ZK_Xform Rotation(double radians, const ZK_3dVector& axis, const ZK_3dPoint& center);

  void Identity() { *this = ZK_Xform(); }
  bool IsIdentity(double tolerance = 0.0) const;
  // True when the bottom row is exactly 0 0 0 1: no perspective.
  bool IsAffine() const {
    return m_xform[3][0] == 0.0 && m_xform[3][1] == 0.0 && m_xform[3][2] == 0.0 &&
           m_xform[3][3] == 1.0;
  }
  // True when the linear part is exactly the identity: the transform moves without turning.
  bool IsTranslation() const {
    return m_xform[0][0] == 1.0 && m_xform[1][1] == 1.0 && m_xform[2][2] == 1.0 &&
           m_xform[0][1] == 0.0 && m_xform[0][2] == 0.0 && m_xform[1][0] == 0.0 &&
           m_xform[1][2] == 0.0 && m_xform[2][0] == 0.0 && m_xform[2][1] == 0.0;
  }

  double& operator()(int row, int column) { return m_xform[row][column]; }
  double operator()(int row, int column) const { return m_xform[row][column]; }
  double* operator[](int row) { return m_xform[row]; }
  const double* operator[](int row) const { return m_xform[row]; }

  ZK_Xform operator*(const ZK_Xform& rhs) const;
  ZK_3dPoint operator*(const ZK_3dPoint& point) const;     // full projective map
  ZK_3dVector operator*(const ZK_3dVector& vector) const;  // upper 3x3 only

  // The general inverse, by Gauss-Jordan elimination with full pivoting after each column has
  // been scaled to a largest element of 1. An affine matrix (bottom row exactly 0, 0, 0, 1) is
  // inverted through its 3x3 part, so that no translation, however far, makes it look singular.
  // A singular matrix (a zero or non-finite column, or a scaled pivot of 1e-12 or less) gives the
  // zero matrix. `pivot`, when given, receives the smallest scaled pivot's magnitude: 0 for a
  // singular matrix.
  ZK_Xform Inverse(double* pivot = nullptr) const;

  bool operator==(const ZK_Xform& other) const;
  bool operator!=(const ZK_Xform& other) const { return !(*this == other); }

  double m_xform[4][4];
};
