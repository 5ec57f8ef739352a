#include "host/platform/automation.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "host/platform/standin/live_strings.h"

namespace {

// A BSTR's block: the length in bytes, then the characters and a terminating zero.
typedef std::uint32_t ByteCount;
static_assert(alignof(OLECHAR) <= sizeof(ByteCount), "characters follow the length aligned");

ByteCount* Header(BSTR text) { return reinterpret_cast<ByteCount*>(text) - 1; }

std::atomic<long> g_live_strings{0};

// The size of an element of that type, or 0 for a type arrays cannot hold.
ULONG ElementSize(VARTYPE type) {
  switch (type) {
    case VT_I2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    case VT_BSTR:
      return sizeof(BSTR);
    case VT_VARIANT:
      return sizeof(VARIANT);
    default:
      return 0;
  }
}

USHORT FeaturesOf(VARTYPE type) {
  if (type == VT_BSTR) return FADF_BSTR;
  if (type == VT_VARIANT) return FADF_VARIANT;
  return 0;
}

// The bounds, first dimension first; the descriptor was allocated with room for all of them.
SAFEARRAYBOUND* Bounds(SAFEARRAY& array) { return array.rgsabound; }
const SAFEARRAYBOUND* Bounds(const SAFEARRAY& array) { return array.rgsabound; }

// The number of elements, or 0 when some dimension is empty.
std::size_t ElementCount(const SAFEARRAY& array) {
  std::size_t count = 1;
  for (USHORT d = 0; d < array.cDims; ++d) count *= Bounds(array)[d].cElements;
  return count;
}

std::size_t DescriptorSize(UINT dims) {
  return sizeof(SAFEARRAY) + (dims - 1) * sizeof(SAFEARRAYBOUND);
}

// The descriptor with room for `dims` (at least 1) bounds, all fields zero; null when out of
// memory.
SAFEARRAY* NewDescriptor(UINT dims) {
  return static_cast<SAFEARRAY*>(std::calloc(1, DescriptorSize(dims)));
}

// Frees the string or variant that one element of an array with those features owns.
void FreeElement(USHORT features, void* element) {
  if (features & FADF_BSTR) SysFreeString(*static_cast<BSTR*>(element));
  if (features & FADF_VARIANT) VariantClear(static_cast<VARIANT*>(element));
}

// Frees what the first `count` elements own.
void FreeElements(const SAFEARRAY& array, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    FreeElement(array.fFeatures, static_cast<char*>(array.pvData) + i * array.cbElements);
  }
}

// Copies one element of an array with those features into raw storage (a variant there is
// overwritten, not cleared): S_OK or E_OUTOFMEMORY, with the target then empty.
HRESULT CopyElement(USHORT features, ULONG size, const void* source, void* target) {
  if (features & FADF_BSTR) {
    const BSTR text = *static_cast<const BSTR*>(source);
    BSTR copy = text ? SysAllocStringLen(text, SysStringLen(text)) : nullptr;
    *static_cast<BSTR*>(target) = copy;
    return text && !copy ? E_OUTOFMEMORY : S_OK;
  }
  if (features & FADF_VARIANT) {
    VariantInit(static_cast<VARIANT*>(target));
    return VariantCopy(static_cast<VARIANT*>(target), static_cast<const VARIANT*>(source));
  }
  std::memcpy(target, source, size);
  return S_OK;
}

// The address of the element at `indices`, or null when they are outside the bounds.
void* ElementAt(const SAFEARRAY& array, const LONG* indices) {
  std::size_t offset = 0;
  std::size_t stride = 1;
  for (USHORT d = 0; d < array.cDims; ++d) {
    const SAFEARRAYBOUND& bound = Bounds(array)[d];
    const long long index = static_cast<long long>(indices[d]) - bound.lLbound;
    if (index < 0 || index >= static_cast<long long>(bound.cElements)) return nullptr;
    offset += static_cast<std::size_t>(index) * stride;
    stride *= bound.cElements;
  }
  return static_cast<char*>(array.pvData) + offset * array.cbElements;
}

}  // namespace

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
  const std::size_t max_length =
      (std::numeric_limits<ByteCount>::max() - sizeof(OLECHAR)) / sizeof(OLECHAR);
  if (length > max_length) return nullptr;
  void* block = std::malloc(sizeof(ByteCount) + (length + 1) * sizeof(OLECHAR));
  if (block == nullptr) return nullptr;
  *static_cast<ByteCount*>(block) = static_cast<ByteCount>(length * sizeof(OLECHAR));
  BSTR characters = reinterpret_cast<BSTR>(static_cast<ByteCount*>(block) + 1);
  if (text) {
    std::memcpy(characters, text, length * sizeof(OLECHAR));
  } else {
    std::memset(characters, 0, length * sizeof(OLECHAR));
  }
  characters[length] = 0;
  ++g_live_strings;
  return characters;
}

BSTR SysAllocString(const OLECHAR* text) {
  UINT length = 0;
  while (text && text[length] != 0) ++length;
  return SysAllocStringLen(text, length);
}

void SysFreeString(BSTR text) {
  if (text == nullptr) return;
  --g_live_strings;
  std::free(Header(text));
}

long TsLiveStringCount() { return g_live_strings; }

UINT SysStringLen(BSTR text) { return text ? *Header(text) / sizeof(OLECHAR) : 0; }

void VariantInit(VARIANT* variant) {
  std::memset(variant, 0, sizeof(VARIANT));
  variant->vt = VT_EMPTY;
}

HRESULT VariantClear(VARIANT* variant) {
  if (variant == nullptr) return E_INVALIDARG;
  const VARTYPE type = variant->vt;
  if (type & VT_BYREF) {
    VariantInit(variant);  // a reference owns nothing
    return S_OK;
  }
  if (type & VT_ARRAY) {
    const HRESULT destroyed = SafeArrayDestroy(variant->parray);
    if (FAILED(destroyed)) return destroyed;
  } else if (type == VT_BSTR) {
    SysFreeString(variant->bstrVal);
  } else if (type == VT_DISPATCH && variant->pdispVal) {
    variant->pdispVal->Release();
  }
  VariantInit(variant);
  return S_OK;
}

HRESULT VariantCopy(VARIANT* target, const VARIANT* source) {
  if (target == nullptr || source == nullptr) return E_INVALIDARG;
  if (target == source) return S_OK;
  const HRESULT cleared = VariantClear(target);
  if (FAILED(cleared)) return cleared;
  VARIANT copy = *source;
  if (!(source->vt & VT_BYREF)) {
    if (source->vt & VT_ARRAY) {
      const HRESULT copied = SafeArrayCopy(source->parray, &copy.parray);
      if (FAILED(copied)) return copied;
    } else if (source->vt == VT_BSTR && source->bstrVal) {
      copy.bstrVal = SysAllocStringLen(source->bstrVal, SysStringLen(source->bstrVal));
      if (copy.bstrVal == nullptr) return E_OUTOFMEMORY;
    } else if (source->vt == VT_DISPATCH && source->pdispVal) {
      source->pdispVal->AddRef();
    }
  }
  *target = copy;
  return S_OK;
}

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dims, const SAFEARRAYBOUND* bounds) {
  const ULONG size = ElementSize(type);
  if (size == 0 || dims == 0 || dims > std::numeric_limits<USHORT>::max() || bounds == nullptr) {
    return nullptr;
  }
  std::size_t count = 1;
  for (UINT d = 0; d < dims; ++d) {
    if (bounds[d].cElements != 0 &&
        count > std::numeric_limits<LONG>::max() / bounds[d].cElements) {
      return nullptr;
    }
    count *= bounds[d].cElements;
  }
  SAFEARRAY* array = NewDescriptor(dims);
  if (array == nullptr) return nullptr;
  array->cDims = static_cast<USHORT>(dims);
  array->fFeatures = FeaturesOf(type);
  array->cbElements = size;
  for (UINT d = 0; d < dims; ++d) Bounds(*array)[d] = bounds[d];
  array->pvData = count ? std::calloc(count, size) : nullptr;
  if (count && array->pvData == nullptr) {
    std::free(array);
    return nullptr;
  }
  return array;
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
  if (array == nullptr) return S_OK;
  if (array->cLocks != 0) return DISP_E_ARRAYISLOCKED;
  if (array->pvData) FreeElements(*array, ElementCount(*array));
  std::free(array->pvData);
  std::free(array);
  return S_OK;
}

HRESULT SafeArrayCopy(const SAFEARRAY* array, SAFEARRAY** copy) {
  if (copy == nullptr) return E_INVALIDARG;
  *copy = nullptr;
  if (array == nullptr) return S_OK;
  if (array->cDims == 0) return E_INVALIDARG;
  SAFEARRAY* target = NewDescriptor(array->cDims);
  if (target == nullptr) return E_OUTOFMEMORY;
  std::memcpy(target, array, DescriptorSize(array->cDims));
  target->cLocks = 0;
  target->pvData = nullptr;
  const std::size_t count = ElementCount(*array);
  if (count) target->pvData = std::calloc(count, array->cbElements);
  if (count && target->pvData == nullptr) {
    std::free(target);
    return E_OUTOFMEMORY;
  }
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t offset = i * array->cbElements;
    const HRESULT copied = CopyElement(array->fFeatures, array->cbElements,
                                       static_cast<const char*>(array->pvData) + offset,
                                       static_cast<char*>(target->pvData) + offset);
    if (FAILED(copied)) {
      FreeElements(*target, i + 1);
      std::free(target->pvData);
      std::free(target);
      return copied;
    }
  }
  *copy = target;
  return S_OK;
}

UINT SafeArrayGetDim(const SAFEARRAY* array) { return array ? array->cDims : 0; }

HRESULT SafeArrayGetLBound(const SAFEARRAY* array, UINT dim, LONG* bound) {
  if (array == nullptr || bound == nullptr) return E_INVALIDARG;
  if (dim == 0 || dim > array->cDims) return DISP_E_BADINDEX;
  *bound = Bounds(*array)[dim - 1].lLbound;
  return S_OK;
}

HRESULT SafeArrayGetUBound(const SAFEARRAY* array, UINT dim, LONG* bound) {
  if (array == nullptr || bound == nullptr) return E_INVALIDARG;
  if (dim == 0 || dim > array->cDims) return DISP_E_BADINDEX;
  const SAFEARRAYBOUND& bounds = Bounds(*array)[dim - 1];
  *bound = static_cast<LONG>(static_cast<long long>(bounds.lLbound) + bounds.cElements - 1);
  return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) {
  if (array == nullptr || data == nullptr) return E_INVALIDARG;
  ++array->cLocks;
  *data = array->pvData;
  return S_OK;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) {
  if (array == nullptr) return E_INVALIDARG;
  if (array->cLocks == 0) return E_UNEXPECTED;
  --array->cLocks;
  return S_OK;
}

HRESULT SafeArrayPutElement(SAFEARRAY* array, const LONG* indices, const void* element) {
  if (array == nullptr || indices == nullptr || element == nullptr) return E_INVALIDARG;
  void* slot = ElementAt(*array, indices);
  if (slot == nullptr) return DISP_E_BADINDEX;
  // Copy first, so that a failed copy leaves the element as it was.
  alignas(VARIANT) char copy[sizeof(VARIANT)];
  if (array->cbElements > sizeof(copy)) return E_INVALIDARG;
  const HRESULT copied = CopyElement(array->fFeatures, array->cbElements, element, copy);
  if (FAILED(copied)) return copied;
  FreeElement(array->fFeatures, slot);
  std::memcpy(slot, copy, array->cbElements);
  return S_OK;
}

HRESULT SafeArrayGetElement(const SAFEARRAY* array, const LONG* indices, void* element) {
  if (array == nullptr || indices == nullptr || element == nullptr) return E_INVALIDARG;
  const void* slot = ElementAt(*array, indices);
  if (slot == nullptr) return DISP_E_BADINDEX;
  return CopyElement(array->fFeatures, array->cbElements, slot, element);
}

bool operator==(const GUID& a, const GUID& b) {
  return a.Data1 == b.Data1 && a.Data2 == b.Data2 && a.Data3 == b.Data3 &&
         std::memcmp(a.Data4, b.Data4, sizeof(a.Data4)) == 0;
}
