#include "shell/stance_preview.h"

#include "host/platform/automation.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_named_object_panel.h"

namespace {

// The element `index` of a one-dimensional array of variants, or an empty variant.
VARIANT Element(const VARIANT& array, LONG index) {
  VARIANT element;
  VariantInit(&element);
  if (array.vt == (VT_ARRAY | VT_VARIANT)) SafeArrayGetElement(array.parray, &index, &element);
  return element;
}

LONG Count(const VARIANT& array) {
  if (array.vt != (VT_ARRAY | VT_VARIANT)) return 0;
  LONG low = 0, high = -1;
  SafeArrayGetLBound(array.parray, 1, &low);
  SafeArrayGetUBound(array.parray, 1, &high);
  return low == 0 ? high + 1 : 0;
}

}  // namespace

IDispatch* TsScriptObject() {
  for (CTarsaPlugIn* plug_in : CTarsaStandIn::PlugIns()) {
    IUnknown* unknown = plug_in->GetScriptObjectInterface(IID_IDispatch);
    if (unknown == nullptr) continue;
    void* dispatch = nullptr;
    const HRESULT found = unknown->QueryInterface(IID_IDispatch, &dispatch);
    unknown->Release();
    if (SUCCEEDED(found)) return static_cast<IDispatch*>(dispatch);
  }
  return nullptr;
}

std::wstring TsSelectedStance() {
  const std::vector<CTsNamedDocObjectManagerDlg*> panels = CTarsaStandIn::Panels();
  if (panels.empty()) return L"";
  const CListCtrl& list = panels.front()->List();
  for (int i = 0; i < list.GetItemCount(); ++i) {
    if (list.GetItemState(i, LVIS_SELECTED) != 0) return list.GetItemText(i);
  }
  return L"";
}

std::vector<TsPreviewMove> TsStanceMoves(const std::wstring& stance) {
  std::vector<TsPreviewMove> moves;
  IDispatch* script = TsScriptObject();
  if (script == nullptr) return moves;
  std::wstring method = L"StanceMoves";
  LPOLESTR name = &method[0];
  DISPID id = DISPID_UNKNOWN;
  VARIANT argument;
  VariantInit(&argument);
  argument.vt = VT_BSTR;
  argument.bstrVal = SysAllocString(stance.c_str());
  VARIANT result;
  VariantInit(&result);
  DISPPARAMS params{&argument, nullptr, 1, 0};
  if (SUCCEEDED(script->GetIDsOfNames(IID_NULL, &name, 1, 0, &id)) &&
      SUCCEEDED(
          script->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &params, &result, nullptr, nullptr))) {
    for (LONG i = 0; i < Count(result); ++i) {
      VARIANT entry = Element(result, i);
      if (Count(entry) == 17) {
        VARIANT object = Element(entry, 0);
        TsPreviewMove move;
        move.object = object.vt == VT_BSTR ? ZK_UuidFromString(object.bstrVal) : ZK_nil_uuid;
        bool numbers = true;
        for (LONG k = 0; k < 16; ++k) {
          VARIANT number = Element(entry, k + 1);
          numbers = numbers && number.vt == VT_R8;
          if (number.vt == VT_R8) move.move(k / 4, k % 4) = number.dblVal;
          VariantClear(&number);
        }
        if (numbers && !ZK_UuidIsNil(move.object)) moves.push_back(move);
        VariantClear(&object);
      }
      VariantClear(&entry);
    }
  }
  VariantClear(&result);
  VariantClear(&argument);
  script->Release();
  return moves;
}
