#include "host/platform/cmd_target.h"

#include <cwctype>
#include <iterator>
#include <vector>

namespace {

bool SameNameIgnoringCase(const wchar_t* a, const wchar_t* b) {
  for (; *a && *b; ++a, ++b) {
    if (std::towlower(static_cast<std::wint_t>(*a)) !=
        std::towlower(static_cast<std::wint_t>(*b))) {
      return false;
    }
  }
  return *a == *b;
}

const InterfaceMapEntry kInterfaces[] = {
    {&IID_IUnknown, &CCmdTarget::DispatchPart},
    {&IID_IDispatch, &CCmdTarget::DispatchPart},
};

}  // namespace

const CRuntimeClass CCmdTarget::kRuntimeClass = {"CCmdTarget", sizeof(CCmdTarget),
                                                 &CObject::kRuntimeClass};
const DispatchMap CCmdTarget::kDispatchMap = {nullptr, nullptr, 0};
const InterfaceMap CCmdTarget::kInterfaceMap = {nullptr, kInterfaces, std::size(kInterfaces)};

CCmdTarget::CCmdTarget() : m_dispatch(*this) {}

CCmdTarget::~CCmdTarget() = default;

const CRuntimeClass* CCmdTarget::GetRuntimeClass() const { return &kRuntimeClass; }

ULONG CCmdTarget::AddRef() { return ++m_reference_count; }

ULONG CCmdTarget::Release() {
  if (m_reference_count == 0) return 0;
  if (--m_reference_count == 0) {
    OnFinalRelease();
    return 0;
  }
  return m_reference_count;
}

void CCmdTarget::OnFinalRelease() { delete this; }

void CCmdTarget::EnableAutomation() { m_automation_enabled = true; }

IUnknown* CCmdTarget::GetInterface(REFIID iid) {
  for (const InterfaceMap* map = GetInterfaceMap(); map; map = map->m_base) {
    for (std::size_t i = 0; i < map->m_count; ++i) {
      if (*map->m_entries[i].m_iid == iid) return map->m_entries[i].m_part(*this);
    }
  }
  return nullptr;
}

IUnknown* CCmdTarget::DispatchPart(CCmdTarget& target) {
  return target.m_automation_enabled ? &target.m_dispatch : nullptr;
}

const DispatchMap* CCmdTarget::GetDispatchMap() const { return &kDispatchMap; }

const InterfaceMap* CCmdTarget::GetInterfaceMap() const { return &kInterfaceMap; }

const DispatchMethod* CCmdTarget::FindMethod(const wchar_t* name) const {
  for (const DispatchMap* map = GetDispatchMap(); map; map = map->m_base) {
    for (std::size_t i = 0; i < map->m_count; ++i) {
      if (SameNameIgnoringCase(map->m_methods[i].m_name, name)) return &map->m_methods[i];
    }
  }
  return nullptr;
}

const DispatchMethod* CCmdTarget::FindMethod(DISPID dispid) const {
  for (const DispatchMap* map = GetDispatchMap(); map; map = map->m_base) {
    for (std::size_t i = 0; i < map->m_count; ++i) {
      if (map->m_methods[i].m_dispid == dispid) return &map->m_methods[i];
    }
  }
  return nullptr;
}

HRESULT CCmdTarget::XDispatch::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  IUnknown* part = m_owner.GetInterface(iid);
  *object = part;
  if (part == nullptr) return E_NOINTERFACE;
  part->AddRef();
  return S_OK;
}

HRESULT CCmdTarget::XDispatch::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID,
                                             DISPID* ids) {
  if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
  const DispatchMethod* method = names[0] ? m_owner.FindMethod(names[0]) : nullptr;
  ids[0] = method ? method->m_dispid : DISPID_UNKNOWN;
  for (UINT i = 1; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  return method && count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT CCmdTarget::XDispatch::Invoke(DISPID member, REFIID iid, LCID, WORD flags,
                                      DISPPARAMS* params, VARIANT* result, EXCEPINFO*, UINT*) {
  if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  const DispatchMethod* method = m_owner.FindMethod(member);
  if (method == nullptr || !(flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET))) {
    return DISP_E_MEMBERNOTFOUND;
  }
  if (params == nullptr || (params->cArgs > 0 && params->rgvarg == nullptr)) return E_INVALIDARG;
  if (params->cNamedArgs != 0) return DISP_E_NONAMEDARGS;
  if (params->cArgs > method->m_parameter_count) return DISP_E_BADPARAMCOUNT;
  // Arguments arrive last first; the ones a script left off the end are missing, as those it
  // skipped in between are.
  VARIANT missing;
  VariantInit(&missing);
  missing.vt = VT_ERROR;
  missing.scode = DISP_E_PARAMNOTFOUND;
  std::vector<const VARIANT*> arguments(method->m_parameter_count, &missing);
  for (UINT i = 0; i < params->cArgs; ++i) arguments[i] = &params->rgvarg[params->cArgs - 1 - i];
  VARIANT value = method->m_call(m_owner, arguments.data());
  if (result) {
    *result = value;
  } else {
    VariantClear(&value);
  }
  return S_OK;
}
