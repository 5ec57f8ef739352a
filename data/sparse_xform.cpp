#include "data/sparse_xform.h"

#include <cmath>
#include <cstring>

CKorvoSparseXform& CKorvoSparseXform::operator=(const ZK_Xform& xform) {
  if (std::memcmp(&xform, &IdentityXform(), sizeof(ZK_Xform)) == 0) {
    m_xform.reset();
  } else if (m_xform) {
    *m_xform = xform;
  } else {
    m_xform = std::make_unique<ZK_Xform>(xform);
  }
  return *this;
}

ZK_Xform CKorvoSparseXform::operator*(const ZK_Xform& rhs) const {
  if (m_xform) return *m_xform * rhs;
  // The kernel's identity times finite elements gives each element plus 0.0: one term of each
  // sum is the element itself, the others are zeros, and only a -0.0 changes (to 0.0). A value
  // that is not finite meets the zeros of the other terms (a NaN, which `zeros` catches), so
  // that product is worked out.
  ZK_Xform product;
  const double* in = &rhs.m_xform[0][0];
  double* out = &product.m_xform[0][0];
  double zeros = 0.0;
  for (int i = 0; i < 16; ++i) {
    out[i] = in[i] + 0.0;
    zeros += in[i] * 0.0;
  }
  return zeros == 0.0 ? product : IdentityXform() * rhs;
}

const ZK_Xform& CKorvoSparseXform::IdentityXform() {
  static const ZK_Xform identity;
  return identity;
}
