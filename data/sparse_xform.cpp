#include "data/sparse_xform.h"

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

const ZK_Xform& CKorvoSparseXform::IdentityXform() {
  static const ZK_Xform identity;
  return identity;
}
