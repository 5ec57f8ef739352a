#include "host/platform/automation.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "host/platform/c_string.h"
#include "host/platform/ole_safe_array.h"
#include "testing/script_values.h"

namespace {

std::wstring Text(BSTR text) { return std::wstring(text ? text : L"", SysStringLen(text)); }

VARIANT TextValue(const wchar_t* text) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_BSTR;
  value.bstrVal = SysAllocString(text);
  return value;
}

// A one-dimensional array with the given lower bound, holding `texts` as BSTRs or as variants.
SAFEARRAY* Texts(VARTYPE type, LONG lower_bound, std::initializer_list<const wchar_t*> texts) {
  const SAFEARRAYBOUND bound = {static_cast<ULONG>(texts.size()), lower_bound};
  SAFEARRAY* array = SafeArrayCreate(type, 1, &bound);
  LONG index = lower_bound;
  for (const wchar_t* text : texts) {
    VARIANT value = TextValue(text);
    const void* element = type == VT_VARIANT ? static_cast<const void*>(&value) : &value.bstrVal;
    EXPECT_EQ(SafeArrayPutElement(array, &index, element), S_OK);
    ++index;
    VariantClear(&value);
  }
  return array;
}

// The lower and upper bound of one dimension, with what asking for each returned.
std::tuple<HRESULT, LONG, HRESULT, LONG> Bounds(SAFEARRAY* array, UINT dimension) {
  LONG lower = 0, upper = 0;
  const HRESULT asked_lower = SafeArrayGetLBound(array, dimension, &lower);
  return {asked_lower, lower, SafeArrayGetUBound(array, dimension, &upper), upper};
}

TEST(Bstr, HoldsItsLengthAndEmbeddedZerosAndNullIsEmpty) {
  const wchar_t with_zero[] = {L'a', 0, L'b'};
  BSTR text = SysAllocStringLen(with_zero, 3);
  EXPECT_EQ(Text(text), std::wstring(with_zero, 3));
  EXPECT_EQ(text[3], 0);
  SysFreeString(text);

  EXPECT_EQ(SysStringLen(nullptr), 0u);
  SysFreeString(nullptr);
  BSTR empty = SysAllocString(nullptr);
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(SysStringLen(empty), 0u);
  SysFreeString(empty);

  BSTR from_string = CString(L"Front view").AllocSysString();
  EXPECT_EQ(Text(from_string), L"Front view");
  SysFreeString(from_string);
}

TEST(SafeArray, ReadsAndWritesElementsWithinAnyLowerBoundAndRefusesOthers) {
  SAFEARRAY* array = Texts(VT_BSTR, -2, {L"a", L"", L"c"});
  EXPECT_EQ(SafeArrayGetDim(array), 1u);
  EXPECT_EQ(array->fFeatures & (FADF_BSTR | FADF_VARIANT), FADF_BSTR);
  EXPECT_EQ(Bounds(array, 1), std::make_tuple(S_OK, -2, S_OK, 0));
  for (UINT outside : {0u, 2u}) {
    EXPECT_EQ(std::get<0>(Bounds(array, outside)), DISP_E_BADINDEX);
    EXPECT_EQ(std::get<2>(Bounds(array, outside)), DISP_E_BADINDEX);
  }

  BSTR* data = nullptr;
  ASSERT_EQ(SafeArrayAccessData(array, reinterpret_cast<void**>(&data)), S_OK);
  EXPECT_EQ(Text(data[0]), L"a");
  EXPECT_EQ(Text(data[2]), L"c");
  EXPECT_EQ(SafeArrayDestroy(array), DISP_E_ARRAYISLOCKED);
  EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
  EXPECT_EQ(SafeArrayUnaccessData(array), E_UNEXPECTED);

  BSTR replacement = SysAllocString(L"replaced");
  for (LONG outside : {-3, 1}) {
    EXPECT_EQ(SafeArrayPutElement(array, &outside, &replacement), DISP_E_BADINDEX);
  }
  LONG first = -2;
  EXPECT_EQ(SafeArrayPutElement(array, &first, &replacement), S_OK);
  SysFreeString(replacement);  // the array keeps its own copy
  BSTR read = nullptr;
  EXPECT_EQ(SafeArrayGetElement(array, &first, &read), S_OK);
  EXPECT_EQ(Text(read), L"replaced");
  SysFreeString(read);
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(SafeArray, LaysOutTwoDimensionsFirstDimensionFastestAndCreatesOnlyArraysItCanHold) {
  const SAFEARRAYBOUND bounds[] = {{2, 1}, {3, 10}};
  SAFEARRAY* array = SafeArrayCreate(VT_I4, 2, bounds);
  ASSERT_NE(array, nullptr);
  EXPECT_EQ(array->fFeatures & (FADF_BSTR | FADF_VARIANT), 0);
  EXPECT_EQ(Bounds(array, 2), std::make_tuple(S_OK, 10, S_OK, 12));
  for (LONG j = 10; j <= 12; ++j) {
    for (LONG i = 1; i <= 2; ++i) {
      const LONG indices[] = {i, j};
      const LONG value = 100 * i + j;
      EXPECT_EQ(SafeArrayPutElement(array, indices, &value), S_OK);
    }
  }
  LONG* data = nullptr;
  ASSERT_EQ(SafeArrayAccessData(array, reinterpret_cast<void**>(&data)), S_OK);
  EXPECT_EQ(std::vector<LONG>(data, data + 6), (std::vector<LONG>{110, 210, 111, 211, 112, 212}));
  SafeArrayUnaccessData(array);
  SafeArrayDestroy(array);

  const SAFEARRAYBOUND bound = {2, 0};
  EXPECT_EQ(SafeArrayCreate(VT_DISPATCH, 1, &bound), nullptr);
  EXPECT_EQ(SafeArrayCreate(VT_NULL, 1, &bound), nullptr);
  EXPECT_EQ(SafeArrayCreate(VT_I4, 0, &bound), nullptr);
  const SAFEARRAYBOUND huge[] = {{0x10000, 0}, {0x10000, 0}};
  EXPECT_EQ(SafeArrayCreate(VT_VARIANT, 2, huge), nullptr);
  const SAFEARRAYBOUND none = {0, 5};
  SAFEARRAY* empty = SafeArrayCreate(VT_VARIANT, 1, &none);
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(Bounds(empty, 1), std::make_tuple(S_OK, 5, S_OK, 4)) << "no elements";
  SafeArrayDestroy(empty);
}

// A copy owns everything it holds: clearing the original, strings and nested arrays included,
// leaves the copy whole.
TEST(Variant, CopiesDeeplyClearsWhatItOwnsButNotWhatItRefersToAndIsHandedAnArrayBuilt) {
  VARIANT nested;
  VariantInit(&nested);
  nested.vt = VT_ARRAY | VT_BSTR;
  nested.parray = Texts(VT_BSTR, 0, {L"inner"});
  SAFEARRAY* outer = Texts(VT_VARIANT, 1, {L"first"});
  LONG second = 1;
  EXPECT_EQ(SafeArrayPutElement(outer, &second, &nested), S_OK);  // replaces "first"
  VariantClear(&nested);

  VARIANT original;
  VariantInit(&original);
  original.vt = VT_ARRAY | VT_VARIANT;
  original.parray = outer;
  VARIANT copy = TextValue(L"overwritten");
  EXPECT_EQ(VariantCopy(&copy, &original), S_OK);
  EXPECT_EQ(VariantClear(&original), S_OK);
  EXPECT_EQ(original.vt, VT_EMPTY);

  VARIANT element;
  ASSERT_EQ(SafeArrayGetElement(copy.parray, &second, &element), S_OK);
  ASSERT_EQ(element.vt, VT_ARRAY | VT_BSTR);
  BSTR inner = nullptr;
  LONG zero = 0;
  EXPECT_EQ(SafeArrayGetElement(element.parray, &zero, &inner), S_OK);
  EXPECT_EQ(Text(inner), L"inner");
  SysFreeString(inner);
  VariantClear(&element);

  VARIANT reference;
  VariantInit(&reference);
  reference.vt = VT_BYREF | VT_VARIANT;
  reference.pvarVal = &copy;
  EXPECT_EQ(VariantClear(&reference), S_OK);
  EXPECT_EQ(copy.vt, VT_ARRAY | VT_VARIANT);

  void* data = nullptr;
  SafeArrayAccessData(copy.parray, &data);
  EXPECT_EQ(VariantClear(&copy), DISP_E_ARRAYISLOCKED);
  SafeArrayUnaccessData(copy.parray);
  EXPECT_EQ(VariantClear(&copy), S_OK);

  // A zero-based array built by the wrapper and handed over.
  VARIANT handed;
  {
    COleSafeArray array;
    const ULONG count = 2;
    EXPECT_EQ(array.PutElement(nullptr, nullptr), E_UNEXPECTED);
    EXPECT_FALSE(array.Create(VT_DISPATCH, 1, &count));
    EXPECT_EQ(array.vt, VT_EMPTY);
    ASSERT_TRUE(array.Create(VT_VARIANT, 1, &count));
    for (LONG i = 0; i < 2; ++i) {
      VARIANT value = TextValue(i == 0 ? L"Front" : L"Side");
      EXPECT_EQ(array.PutElement(&i, &value), S_OK);
      VariantClear(&value);
    }
    handed = array.Detach();
    EXPECT_EQ(array.vt, VT_EMPTY);
    ASSERT_TRUE(array.Create(VT_BSTR, 1, &count));  // freed with the wrapper
  }
  ScriptValues values;
  EXPECT_EQ(values.Texts(handed), (std::vector<std::wstring>{L"Front", L"Side"}));
  VariantClear(&handed);
}
}  // namespace
