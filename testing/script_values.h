// ScriptValues: the values a script engine passes to a script object and gets back, made as an
// engine makes them, and late-bound calls by name through IDispatch. Every value made here, and
// every result, is owned by the ScriptValues object and cleared with it; a reference points at
// another of its values.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include "host/platform/automation.h"
#include "host/platform/standin/live_strings.h"

class ScriptValues {
 public:
  ScriptValues() = default;
  ScriptValues(const ScriptValues&) = delete;
  ScriptValues& operator=(const ScriptValues&) = delete;
  ~ScriptValues() { ClearValues(); }

  // Clears every value and result made so far; then every string made since this object was
  // made must be freed, or a call leaked it.
  void ExpectEveryStringFreed() {
    ClearValues();
    EXPECT_EQ(TsLiveStringCount(), live_strings_) << "strings a call made are left";
  }

  // Calls a method by name, arguments first to last, as a script engine does; the result.
  const VARIANT& Call(IDispatch& dispatch, const wchar_t* method,
                      std::vector<VARIANT> arguments = {}) {
    std::wstring name = method;
    LPOLESTR names[] = {name.data()};
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(dispatch.GetIDsOfNames(IID_NULL, names, 1, 0, &id), S_OK) << name;
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPPARAMS params = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    VARIANT& result = NewValue(VT_EMPTY);
    EXPECT_EQ(dispatch.Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &params, &result, nullptr, nullptr),
              S_OK);
    return result;
  }

  VARIANT& NewValue(VARTYPE type) {
    VARIANT& value = values_.emplace_back();
    VariantInit(&value);
    value.vt = type;
    return value;
  }
  VARIANT& Text(const std::wstring& text) {
    VARIANT& value = NewValue(VT_BSTR);
    value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return value;
  }
  VARIANT& I2(SHORT number) { return Number(VT_I2, &VARIANT::iVal, number); }
  VARIANT& I4(LONG number) { return Number(VT_I4, &VARIANT::lVal, number); }
  VARIANT& R4(FLOAT number) { return Number(VT_R4, &VARIANT::fltVal, number); }
  VARIANT& R8(DOUBLE number) { return Number(VT_R8, &VARIANT::dblVal, number); }
  VARIANT& Bool(VARIANT_BOOL flag) { return Number(VT_BOOL, &VARIANT::boolVal, flag); }
  // An argument left out.
  VARIANT& Missing() { return Number(VT_ERROR, &VARIANT::scode, DISP_E_PARAMNOTFOUND); }
  VARIANT& Ref(VARIANT& target) {
    VARIANT& value = NewValue(VT_BYREF | VT_VARIANT);
    value.pvarVal = &target;
    return value;
  }
  // A one-dimensional array of strings (VT_BSTR) or of variants holding them (VT_VARIANT).
  VARIANT& Array(VARTYPE type, LONG lower_bound, const std::vector<std::wstring>& texts) {
    const SAFEARRAYBOUND bound = {static_cast<ULONG>(texts.size()), lower_bound};
    VARIANT& value = NewValue(VT_ARRAY | type);
    value.parray = SafeArrayCreate(type, 1, &bound);
    for (LONG i = 0; i < static_cast<LONG>(texts.size()); ++i) {
      const LONG index = lower_bound + i;
      const VARIANT& element = Text(texts[i]);
      const void* put = type == VT_VARIANT ? static_cast<const void*>(&element) : &element.bstrVal;
      EXPECT_EQ(SafeArrayPutElement(value.parray, &index, put), S_OK);
    }
    return value;
  }

  // The elements of an array result, first to last; every result must be a zero-based, 1-D array
  // of variants. This object owns the elements.
  std::vector<const VARIANT*> Elements(const VARIANT& v) {
    std::vector<const VARIANT*> elements;
    EXPECT_EQ(v.vt, VT_ARRAY | VT_VARIANT);
    if (v.vt != (VT_ARRAY | VT_VARIANT)) return elements;
    LONG lower = -1, upper = -1;
    EXPECT_EQ(SafeArrayGetDim(v.parray), 1u);
    SafeArrayGetLBound(v.parray, 1, &lower);
    SafeArrayGetUBound(v.parray, 1, &upper);
    EXPECT_EQ(lower, 0);
    for (LONG i = lower; i <= upper; ++i) {
      VARIANT& element = NewValue(VT_EMPTY);
      SafeArrayGetElement(v.parray, &i, &element);
      elements.push_back(&element);
    }
    return elements;
  }
  static bool IsNull(const VARIANT& v) { return v.vt == VT_NULL; }
  static bool IsTrue(const VARIANT& v) { return v.vt == VT_BOOL && v.boolVal == VARIANT_TRUE; }
  static bool IsFalse(const VARIANT& v) { return v.vt == VT_BOOL && v.boolVal == VARIANT_FALSE; }
  // An array result's texts; every element must be a string.
  std::vector<std::wstring> Texts(const VARIANT& v) {
    std::vector<std::wstring> texts;
    for (const VARIANT* element : Elements(v)) {
      EXPECT_EQ(element->vt, VT_BSTR);
      if (element->vt == VT_BSTR)
        texts.emplace_back(element->bstrVal, SysStringLen(element->bstrVal));
    }
    return texts;
  }

 private:
  template <class Field, class Given>
  VARIANT& Number(VARTYPE type, Field VARIANT::*field, Given number) {
    VARIANT& value = NewValue(type);
    value.*field = static_cast<Field>(number);
    return value;
  }

  void ClearValues() {
    for (VARIANT& value : values_) VariantClear(&value);
    values_.clear();
  }

  const long live_strings_ = TsLiveStringCount();
  std::deque<VARIANT> values_;
};
