#include "script/script_values.h"

#include "host/platform/c_string.h"
#include "host/tarsa/tarsa_app.h"

namespace {

// Longer chains of references than any script makes are taken for cycles.
constexpr int kMaxReferences = 64;

ZK_wString TextOf(BSTR text) { return ZK_wString(text, static_cast<int>(SysStringLen(text))); }

// Appends the texts of a one-dimensional array's elements, first to last: of variants, every one
// that converts; of strings, every non-empty one; of other elements, none.
void CollectTexts(SAFEARRAY* array, ZK_ClassArray<ZK_wString>& texts) {
  LONG lower = 0;
  LONG upper = 0;
  if (FAILED(SafeArrayGetLBound(array, 1, &lower)) ||
      FAILED(SafeArrayGetUBound(array, 1, &upper))) {
    return;
  }
  const bool variants = (array->fFeatures & FADF_VARIANT) && array->cbElements == sizeof(VARIANT);
  const bool strings = (array->fFeatures & FADF_BSTR) && array->cbElements == sizeof(BSTR);
  void* data = nullptr;
  if (FAILED(SafeArrayAccessData(array, &data))) return;
  const long long count = data ? static_cast<long long>(upper) - lower + 1 : 0;
  for (long long i = 0; i < count; ++i) {
    if (variants) {
      ZK_wString text;
      if (VariantToString(static_cast<const VARIANT*>(data)[i], text)) texts.Append(text);
    } else if (strings) {
      const BSTR text = static_cast<const BSTR*>(data)[i];
      if (SysStringLen(text) > 0) texts.Append(TextOf(text));
    }
  }
  SafeArrayUnaccessData(array);
}

// The array a parameter holds directly or through a reference, or null.
SAFEARRAY* ArrayOf(const VARIANT& value) {
  if (!(value.vt & VT_ARRAY)) return nullptr;
  if (value.vt & VT_BYREF) return value.pparray ? *value.pparray : nullptr;
  return value.parray;
}

}  // namespace

bool IsMissing(const VARIANT& value) {
  return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND;
}

const VARIANT* FollowReferences(const VARIANT& value) {
  const VARIANT* followed = &value;
  for (int i = 0; followed->vt == (VT_BYREF | VT_VARIANT); ++i) {
    if (i == kMaxReferences) return nullptr;
    followed = followed->pvarVal;
    if (followed == nullptr) return nullptr;
  }
  return followed;
}

bool VariantToString(const VARIANT& value, ZK_wString& text) {
  if (IsMissing(value)) return false;
  const VARIANT* v = FollowReferences(value);
  if (v == nullptr) return false;
  ZK_wString converted;
  switch (v->vt) {
    case VT_I2:
      converted.Format(L"%d", static_cast<int>(v->iVal));
      break;
    case VT_I4:
      converted.Format(L"%d", static_cast<int>(v->lVal));
      break;
    case VT_R4:
      converted.Format(L"%f", static_cast<double>(v->fltVal));
      break;
    case VT_R8:
      converted.Format(L"%g", v->dblVal);
      break;
    case VT_BSTR:
      converted = TextOf(v->bstrVal);
      break;
    case VT_BOOL:
      converted = v->boolVal == VARIANT_TRUE ? L"True" : L"False";
      break;
    default:
      return false;
  }
  text = converted;
  return true;
}

const CTarsaObject* ObjectFromIdString(const ZK_wString& text) {
  ZK_wString trimmed = text;
  trimmed.TrimLeftAndRight();
  if (trimmed.IsEmpty()) return nullptr;
  const ZK_UUID id = ZK_UuidFromString(trimmed.Array());
  if (ZK_UuidIsNil(id)) return nullptr;
  CTarsaDoc* doc = TarsaApp().ObsoleteActiveDoc();
  return doc ? doc->LookupObject(id) : nullptr;
}

int VariantToObjRefs(const VARIANT& value, ZK_SimpleArray<const CTarsaObject*>& objects) {
  if (IsMissing(value)) return objects.Count();
  const VARIANT* v = FollowReferences(value);
  if (v == nullptr) return objects.Count();
  ZK_ClassArray<ZK_wString> ids;
  if (v->vt == VT_BSTR) {
    ZK_wString id;
    if (VariantToString(*v, id)) ids.Append(id);
  } else if (SAFEARRAY* array = ArrayOf(*v); array && SafeArrayGetDim(array) == 1) {
    CollectTexts(array, ids);
  }
  for (int i = 0; i < ids.Count(); ++i) {
    if (const CTarsaObject* object = ObjectFromIdString(ids[i])) objects.Append(object);
  }
  return objects.Count();
}

VARIANT StringVariant(const wchar_t* text) {
  VARIANT element;
  VariantInit(&element);
  element.vt = VT_BSTR;
  element.bstrVal = CString(text).AllocSysString();
  return element;
}

bool VariantsToSafeArray(std::vector<VARIANT>& elements, COleSafeArray& array) {
  const ULONG count = static_cast<ULONG>(elements.size());
  bool made = array.Create(VT_VARIANT, 1, &count);
  for (LONG i = 0; i < static_cast<LONG>(count); ++i) {
    made = made && SUCCEEDED(array.PutElement(&i, &elements[static_cast<size_t>(i)]));
    VariantClear(&elements[static_cast<size_t>(i)]);
  }
  if (!made) array.Clear();
  return made;
}

bool StringsToSafeArray(const ZK_ClassArray<ZK_wString>& strings, COleSafeArray& array) {
  if (strings.Count() == 0) return false;
  std::vector<VARIANT> elements;
  elements.reserve(static_cast<size_t>(strings.Count()));
  for (int i = 0; i < strings.Count(); ++i) elements.push_back(StringVariant(strings[i]));
  return VariantsToSafeArray(elements, array);
}

int CompareNamesNoCase(const void* a, const void* b) {
  const ZK_wString* first = *static_cast<const ZK_wString* const*>(a);
  const ZK_wString* second = *static_cast<const ZK_wString* const*>(b);
  if (first == nullptr) return second == nullptr ? 0 : -1;
  if (second == nullptr) return 1;
  return first->CompareNoCase(*second);
}
