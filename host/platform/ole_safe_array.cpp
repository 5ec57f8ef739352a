#include "host/platform/ole_safe_array.h"

#include <vector>

bool COleSafeArray::Create(VARTYPE type, ULONG dims, const ULONG* elements) {
  std::vector<SAFEARRAYBOUND> bounds(elements ? dims : 0);
  for (ULONG d = 0; d < bounds.size(); ++d) bounds[d] = {elements[d], 0};
  return Create(type, static_cast<ULONG>(bounds.size()), bounds.data());
}

bool COleSafeArray::Create(VARTYPE type, ULONG dims, const SAFEARRAYBOUND* bounds) {
  Clear();
  SAFEARRAY* array = SafeArrayCreate(type, dims, bounds);
  if (array == nullptr) return false;
  vt = static_cast<VARTYPE>(VT_ARRAY | type);
  parray = array;
  return true;
}

HRESULT COleSafeArray::PutElement(const LONG* indices, const void* element) {
  if (!(vt & VT_ARRAY) || (vt & VT_BYREF)) return E_UNEXPECTED;
  return SafeArrayPutElement(parray, indices, element);
}

VARIANT COleSafeArray::Detach() {
  VARIANT held = *this;
  VariantInit(this);
  return held;
}
