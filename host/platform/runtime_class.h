// CObject and CRuntimeClass: the root of the platform class library's classes and the run-time
// description each class gives of itself (its name, its size and its base, and for a class the
// framework may create, the function that makes one), through which the host tells what kind of
// object it was handed and creates the panels plug-ins register.
#pragma once

class CObject;

struct CRuntimeClass {
  const char* m_lpszClassName;
  int m_nObjectSize;
  const CRuntimeClass* m_pBaseClass;  // null for CObject
  CObject* (*m_pfnCreateObject)() = nullptr;

  // A new object of the class, owned by the caller; null when the framework cannot create it.
  CObject* CreateObject() const { return m_pfnCreateObject ? m_pfnCreateObject() : nullptr; }

  // True when this class is `base` or derives from it.
  bool IsDerivedFrom(const CRuntimeClass* base) const {
    for (const CRuntimeClass* c = this; c; c = c->m_pBaseClass) {
      if (c == base) return true;
    }
    return false;
  }
};

class CObject {
 public:
  static const CRuntimeClass kRuntimeClass;

  virtual ~CObject() = default;
  // The description of the object's most derived class that gives one.
  virtual const CRuntimeClass* GetRuntimeClass() const { return &kRuntimeClass; }
  bool IsKindOf(const CRuntimeClass* c) const { return GetRuntimeClass()->IsDerivedFrom(c); }
};

inline const CRuntimeClass CObject::kRuntimeClass = {"CObject", sizeof(CObject), nullptr};
