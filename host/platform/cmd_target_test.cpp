#include "host/platform/cmd_target.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <vector>

namespace {

// {5A1D3C0E-2B47-4F7A-9C61-0D8E4B2F9A13}
const IID kCounterInterface = {
    0x5A1D3C0E, 0x2B47, 0x4F7A, {0x9C, 0x61, 0x0D, 0x8E, 0x4B, 0x2F, 0x9A, 0x13}};

VARIANT Number(LONG value) {
  VARIANT result;
  VariantInit(&result);
  result.vt = VT_I4;
  result.lVal = value;
  return result;
}

// A scriptable object: Join gives its arguments' types and values as text, Count gives how often
// it was called.
class CCounter : public CCmdTarget {
 public:
  static const CRuntimeClass kRuntimeClass;
  static const DispatchMap kDispatchMap;
  static const InterfaceMap kInterfaceMap;

  explicit CCounter(bool* destroyed = nullptr) : m_destroyed(destroyed) { EnableAutomation(); }
  ~CCounter() override {
    if (m_destroyed) *m_destroyed = true;
  }
  const CRuntimeClass* GetRuntimeClass() const override { return &kRuntimeClass; }
  const DispatchMap* GetDispatchMap() const override { return &kDispatchMap; }
  const InterfaceMap* GetInterfaceMap() const override { return &kInterfaceMap; }

  VARIANT Join(const VARIANT& a, const VARIANT& b) {
    ++m_calls;
    const std::wstring text = Describe(a) + L"," + Describe(b);
    VARIANT result;
    VariantInit(&result);
    result.vt = VT_BSTR;
    result.bstrVal = SysAllocString(text.c_str());
    return result;
  }
  VARIANT Count() { return Number(m_calls); }

 private:
  static std::wstring Describe(const VARIANT& v) {
    if (v.vt == VT_I4) return std::to_wstring(v.lVal);
    if (v.vt == VT_ERROR && v.scode == DISP_E_PARAMNOTFOUND) return L"missing";
    return L"type " + std::to_wstring(v.vt);
  }

  bool* m_destroyed;
  int m_calls = 0;
};

const DispatchMethod kCounterMethods[] = {
    DispatchMethodOf<&CCounter::Join>(L"Join", 7),
    DispatchMethodOf<&CCounter::Count>(L"Count", 1),
};
const InterfaceMapEntry kCounterInterfaces[] = {{&kCounterInterface, &CCmdTarget::DispatchPart}};

const CRuntimeClass CCounter::kRuntimeClass = {"CCounter", sizeof(CCounter),
                                               &CCmdTarget::kRuntimeClass};
const DispatchMap CCounter::kDispatchMap = {&CCmdTarget::kDispatchMap, kCounterMethods,
                                            std::size(kCounterMethods)};
const InterfaceMap CCounter::kInterfaceMap = {&CCmdTarget::kInterfaceMap, kCounterInterfaces,
                                              std::size(kCounterInterfaces)};

// Calls through IDispatch as a script engine does: the id by name, then the arguments last first.
class ScriptCall {
 public:
  explicit ScriptCall(CCmdTarget& target)
      : m_dispatch(static_cast<IDispatch*>(target.GetInterface(IID_IDispatch))) {}

  HRESULT IdOf(const wchar_t* name, DISPID& id) {
    std::wstring text = name;
    LPOLESTR names[] = {text.data()};
    return m_dispatch->GetIDsOfNames(IID_NULL, names, 1, 0, &id);
  }
  // The call's outcome; `text` receives a string result.
  HRESULT Call(DISPID id, std::vector<VARIANT> arguments, std::wstring* text = nullptr,
               WORD flags = DISPATCH_METHOD) {
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPPARAMS params = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    VARIANT result;
    VariantInit(&result);
    const HRESULT outcome = m_dispatch->Invoke(id, IID_NULL, 0, flags, &params,
                                               text ? &result : nullptr, nullptr, nullptr);
    if (text && result.vt == VT_BSTR) *text = result.bstrVal;
    VariantClear(&result);
    return outcome;
  }

  IDispatch* m_dispatch;
};

TEST(CmdTarget, AnswersItsInterfacesFindsAndCallsItsMethodsAndTheFinalReleaseDestroysIt) {
  CCmdTarget plain;
  EXPECT_EQ(plain.GetInterface(IID_IDispatch), nullptr);
  EXPECT_EQ(plain.GetInterface(IID_IUnknown), nullptr);
  EXPECT_FALSE(plain.IsKindOf(&CCounter::kRuntimeClass));

  bool destroyed = false;
  auto* counter = new CCounter(&destroyed);
  EXPECT_TRUE(counter->IsKindOf(&CCmdTarget::kRuntimeClass));
  IUnknown* dispatch = counter->GetInterface(IID_IDispatch);
  ASSERT_NE(dispatch, nullptr);
  EXPECT_EQ(counter->GetInterface(IID_IUnknown), dispatch);
  EXPECT_EQ(counter->GetInterface(kCounterInterface), dispatch);
  EXPECT_EQ(counter->GetInterface(IID_NULL), nullptr);
  EXPECT_EQ(plain.GetInterface(kCounterInterface), nullptr);

  void* asked = counter;
  EXPECT_EQ(dispatch->QueryInterface(IID_NULL, &asked), E_NOINTERFACE);
  EXPECT_EQ(asked, nullptr);
  EXPECT_EQ(dispatch->QueryInterface(kCounterInterface, &asked), S_OK);
  EXPECT_EQ(asked, dispatch);
  EXPECT_EQ(dispatch->Release(), 1u);

  // Scripts find its methods by name, in any letter case, and call them.
  ScriptCall script(*counter);
  DISPID id = 0;
  EXPECT_EQ(script.IdOf(L"jOIN", id), S_OK);
  EXPECT_EQ(id, 7);
  EXPECT_EQ(script.IdOf(L"Joins", id), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(id, DISPID_UNKNOWN);

  std::wstring join = L"Join", parameter = L"a";
  LPOLESTR with_parameter[] = {join.data(), parameter.data()};
  DISPID ids[2] = {0, 0};
  EXPECT_EQ(script.m_dispatch->GetIDsOfNames(IID_NULL, with_parameter, 2, 0, ids),
            DISP_E_UNKNOWNNAME);
  EXPECT_EQ(std::vector<DISPID>(ids, ids + 2), (std::vector<DISPID>{7, DISPID_UNKNOWN}));
  EXPECT_EQ(script.m_dispatch->GetIDsOfNames(kCounterInterface, with_parameter, 1, 0, ids),
            DISP_E_UNKNOWNINTERFACE);

  std::wstring text;
  EXPECT_EQ(script.Call(7, {Number(1), Number(2)}, &text), S_OK);
  EXPECT_EQ(text, L"1,2");
  EXPECT_EQ(script.Call(7, {Number(1)}, &text, DISPATCH_METHOD | DISPATCH_PROPERTYGET), S_OK);
  EXPECT_EQ(text, L"1,missing");
  EXPECT_EQ(script.Call(7, {}), S_OK);  // the result, not asked for, is freed

  EXPECT_EQ(script.Call(7, {Number(1), Number(2), Number(3)}), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(script.Call(8, {}), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(script.Call(7, {}, nullptr, 4 /* property put */), DISP_E_MEMBERNOTFOUND);
  DISPID named = 0;
  VARIANT argument = Number(1);
  DISPPARAMS with_name = {&argument, &named, 1, 1};
  EXPECT_EQ(script.m_dispatch->Invoke(7, IID_NULL, 0, DISPATCH_METHOD, &with_name, nullptr, nullptr,
                                      nullptr),
            DISP_E_NONAMEDARGS);

  VARIANT count;
  DISPPARAMS none = {nullptr, nullptr, 0, 0};
  EXPECT_EQ(
      script.m_dispatch->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &none, &count, nullptr, nullptr),
      S_OK);
  EXPECT_EQ(count.vt, VT_I4);
  EXPECT_EQ(count.lVal, 3);  // only the calls that reached the method

  EXPECT_EQ(dispatch->AddRef(), 2u);
  EXPECT_EQ(counter->Release(), 1u);
  EXPECT_FALSE(destroyed);
  EXPECT_EQ(dispatch->Release(), 0u);
  EXPECT_TRUE(destroyed);
}

}  // namespace
