#include "host/zefkit/zk_xform.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// A pivot at or below this, once every column is scaled to a largest element of 1, is taken as 0.
constexpr double kSingularPivot = 1e-12;

// Inverts the leading n x n block of `m` into `out` by Gauss-Jordan elimination with full
// pivoting, each column first scaled to a largest element of 1 (A^-1 = D (A D)^-1 for the diagonal
// scaling D), so that the size of a column does not decide whether the block is singular. False
// for a singular block; `smallest_pivot` receives the smallest scaled pivot's magnitude.
bool InvertBlock(const double m[4][4], int n, double out[4][4], double& smallest_pivot) {
  double a[4][4];
  double inverse[4][4];
  double column_scale[4];
  for (int c = 0; c < n; ++c) {
    double largest = 0.0;
    for (int r = 0; r < n; ++r) largest = std::max(largest, std::fabs(m[r][c]));
    if (!(largest > 0.0) || !std::isfinite(largest)) return false;
    column_scale[c] = 1.0 / largest;
    for (int r = 0; r < n; ++r) {
      a[r][c] = m[r][c] * column_scale[c];
      inverse[r][c] = r == c ? 1.0 : 0.0;
    }
  }
  int column_of_row[4] = {0, 1, 2, 3};  // full pivoting swaps columns; undone at the end
  smallest_pivot = 1.0;
  for (int k = 0; k < n; ++k) {
    int pr = k, pc = k;
    for (int r = k; r < n; ++r) {
      for (int c = k; c < n; ++c) {
        if (std::fabs(a[r][c]) > std::fabs(a[pr][pc])) {
          pr = r;
          pc = c;
        }
      }
    }
    const double p = a[pr][pc];
    if (!(std::fabs(p) > kSingularPivot)) return false;
    smallest_pivot = std::min(smallest_pivot, std::fabs(p));
    for (int c = 0; c < n; ++c) {
      std::swap(a[k][c], a[pr][c]);
      std::swap(inverse[k][c], inverse[pr][c]);
    }
    for (int r = 0; r < n; ++r) std::swap(a[r][k], a[r][pc]);
    std::swap(column_of_row[k], column_of_row[pc]);
    for (int c = 0; c < n; ++c) {
      a[k][c] /= p;
      inverse[k][c] /= p;
    }
    for (int r = 0; r < n; ++r) {
      if (r == k || a[r][k] == 0.0) continue;
      const double f = a[r][k];
      for (int c = 0; c < n; ++c) {
        a[r][c] -= f * a[k][c];
        inverse[r][c] -= f * inverse[k][c];
      }
    }
  }
  // Swapping columns permuted the unknowns: row k of the result belongs to column_of_row[k].
  for (int k = 0; k < n; ++k) {
    const int row = column_of_row[k];
    for (int c = 0; c < n; ++c) out[row][c] = inverse[k][c] * column_scale[row];
  }
  return true;
}

}  // namespace

ZK_Xform ZK_Xform::Translation(double dx, double dy, double dz) {
  ZK_Xform x;
  x.m_xform[0][3] = dx;
  x.m_xform[1][3] = dy;
  x.m_xform[2][3] = dz;
  return x;
}

ZK_Xform ZK_Xform::Scale(double sx, double sy, double sz) {
  ZK_Xform x;
  x.m_xform[0][0] = sx;
  x.m_xform[1][1] = sy;
  x.m_xform[2][2] = sz;
  return x;
}

ZK_Xform ZK_Xform::Rotation(double radians, const ZK_3dVector& axis, const ZK_3dPoint& center) {
  const double length = std::sqrt(axis.x * axis.x + axis.y * axis.y + axis.z * axis.z);
  if (length == 0.0) return ZK_Xform();
  const double x = axis.x / length, y = axis.y / length, z = axis.z / length;
  const double c = std::cos(radians), s = std::sin(radians), t = 1.0 - c;
  ZK_Xform r;
  r.m_xform[0][0] = t * x * x + c;
  r.m_xform[0][1] = t * x * y - s * z;
  r.m_xform[0][2] = t * x * z + s * y;
  r.m_xform[1][0] = t * x * y + s * z;
  r.m_xform[1][1] = t * y * y + c;
  r.m_xform[1][2] = t * y * z - s * x;
  r.m_xform[2][0] = t * x * z - s * y;
  r.m_xform[2][1] = t * y * z + s * x;
  r.m_xform[2][2] = t * z * z + c;
  return Translation(center.x, center.y, center.z) * r *
         Translation(-center.x, -center.y, -center.z);
}

bool ZK_Xform::IsIdentity(double tolerance) const {
  for (int r = 0; r < 4; ++r) {
    for (int c = 0; c < 4; ++c) {
      if (std::fabs(m_xform[r][c] - (r == c ? 1.0 : 0.0)) > tolerance) return false;
    }
  }
  return true;
}

ZK_Xform ZK_Xform::operator*(const ZK_Xform& rhs) const {
  if (IsAffine() && rhs.IsAffine() && IsTranslation() && rhs.IsTranslation()) {
    // Two moves make a move: the sums below, less every term that is exactly zero or one.
    return Translation(m_xform[0][3] + rhs.m_xform[0][3], m_xform[1][3] + rhs.m_xform[1][3],
                       m_xform[2][3] + rhs.m_xform[2][3]);
  }
  ZK_Xform product(0.0);
  if (IsAffine() && rhs.IsAffine()) {
    // The bottom rows are 0 0 0 1: only the top three rows need working out, and the fourth
    // column of rhs meets a 1. The same sums as below, less the terms that are exactly zero.
    for (int r = 0; r < 3; ++r) {
      for (int c = 0; c < 4; ++c) {
        double sum = 0.0;
        for (int k = 0; k < 3; ++k) sum += m_xform[r][k] * rhs.m_xform[k][c];
        product.m_xform[r][c] = c == 3 ? sum + m_xform[r][3] : sum;
      }
    }
    product.m_xform[3][3] = 1.0;
    return product;
  }
  for (int r = 0; r < 4; ++r) {
    for (int c = 0; c < 4; ++c) {
      double sum = 0.0;
      for (int k = 0; k < 4; ++k) sum += m_xform[r][k] * rhs.m_xform[k][c];
      product.m_xform[r][c] = sum;
    }
  }
  return product;
}

ZK_3dPoint ZK_Xform::operator*(const ZK_3dPoint& p) const {
  const double* m[4] = {m_xform[0], m_xform[1], m_xform[2], m_xform[3]};
  const double w = m[3][0] * p.x + m[3][1] * p.y + m[3][2] * p.z + m[3][3];
  const double scale = w != 0.0 ? 1.0 / w : 1.0;
  return {(m[0][0] * p.x + m[0][1] * p.y + m[0][2] * p.z + m[0][3]) * scale,
          (m[1][0] * p.x + m[1][1] * p.y + m[1][2] * p.z + m[1][3]) * scale,
          (m[2][0] * p.x + m[2][1] * p.y + m[2][2] * p.z + m[2][3]) * scale};
}

ZK_3dVector ZK_Xform::operator*(const ZK_3dVector& v) const {
  return {m_xform[0][0] * v.x + m_xform[0][1] * v.y + m_xform[0][2] * v.z,
          m_xform[1][0] * v.x + m_xform[1][1] * v.y + m_xform[1][2] * v.z,
          m_xform[2][0] * v.x + m_xform[2][1] * v.y + m_xform[2][2] * v.z};
}

ZK_Xform ZK_Xform::Inverse(double* pivot) const {
  const bool affine = IsAffine();
  if (affine && IsTranslation()) {
    // The elimination below gives exactly this for an identity linear part, at a fraction of
    // the cost; moves are the most common transforms.
    if (pivot) *pivot = 1.0;
    return Translation(-m_xform[0][3], -m_xform[1][3], -m_xform[2][3]);
  }
  ZK_Xform inverse;
  double smallest_pivot = 0.0;
  if (!InvertBlock(m_xform, affine ? 3 : 4, inverse.m_xform, smallest_pivot)) {
    if (pivot) *pivot = 0.0;
    return ZK_Xform(0.0);
  }
  if (affine) {
    // [L t; 0 1]^-1 = [L^-1  -L^-1 t; 0 1]
    for (int r = 0; r < 3; ++r) {
      inverse.m_xform[r][3] = 0.0;
      for (int k = 0; k < 3; ++k) inverse.m_xform[r][3] -= inverse.m_xform[r][k] * m_xform[k][3];
    }
  }
  if (pivot) *pivot = smallest_pivot;
  return inverse;
}

bool ZK_Xform::operator==(const ZK_Xform& other) const {
  for (int r = 0; r < 4; ++r) {
    for (int c = 0; c < 4; ++c) {
      if (m_xform[r][c] != other.m_xform[r][c]) return false;
    }
  }
  return true;
}
