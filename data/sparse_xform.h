// CKorvoSparseXform: a transform that takes no room while it is exactly the identity, for a
// field of which most copies hold the identity (a placement record's last transform, which the
// event watcher takes out again after every replacement). It reads like the ZK_Xform it holds.
// Owned by the object that has it as a field; copies are deep.
#pragma once

#include <memory>

#include "host/zefkit/zk_xform.h"

class CKorvoSparseXform {
 public:
  CKorvoSparseXform() = default;
  CKorvoSparseXform(const CKorvoSparseXform& source)
      : m_xform(source.m_xform ? std::make_unique<ZK_Xform>(*source.m_xform) : nullptr) {}
  CKorvoSparseXform& operator=(const CKorvoSparseXform& source) { return *this = source.Get(); }
  // Keeps `xform` bit for bit: only the identity's own bits (no -0.0) are kept as no room.
  CKorvoSparseXform& operator=(const ZK_Xform& xform);

  // The transform, inside this object or the shared identity: valid until this object changes.
  const ZK_Xform& Get() const { return m_xform ? *m_xform : IdentityXform(); }
  operator const ZK_Xform&() const { return Get(); }

  void Identity() { m_xform.reset(); }
  bool IsIdentity(double tolerance = 0.0) const {
    return !m_xform || m_xform->IsIdentity(tolerance);
  }
  ZK_Xform Inverse() const { return Get().Inverse(); }
  // The kernel's product, bit for bit, without its sixty-four multiplications while this is the
  // identity.
  ZK_Xform operator*(const ZK_Xform& rhs) const;
  bool operator==(const ZK_Xform& other) const { return Get() == other; }
  bool operator!=(const ZK_Xform& other) const { return !(Get() == other); }
  // The bytes held outside the object itself.
  size_t HeldBytes() const { return m_xform ? sizeof(ZK_Xform) : 0; }

 private:
  static const ZK_Xform& IdentityXform();

  std::unique_ptr<ZK_Xform> m_xform;  // null: the identity
};
