// Script: calls a method of a plug-in's script object as a script would, with typed arguments,
// and prints the result as the script sees it. The method is named as scripts name it (letter
// case ignored); each argument is one answer, Enter after the last calls the method:
//   i2:5  i4:-3  r4:1.5  r8:1.5   a 16- or 32-bit integer, a 32- or 64-bit float
//   true  false                    a boolean
//   ids:a,b                        an array of object ids; an object's name stands for its ids
//   missing                        a missing argument
//   anything else                  a text ("text:..." for a text that looks like the above)
// The result prints as Null, True, False, a number, a text in quotes, or an array, one element a
// line. The command fails when no plug-in offers a script object or the method is unknown.
#include <cmath>
#include <cwchar>
#include <limits>
#include <string>
#include <vector>

#include "host/platform/automation.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_app.h"
#include "host/tarsa/tarsa_doc.h"
#include "host/tarsa/tarsa_get.h"
#include "shell/object_listing.h"
#include "shell/shell_command.h"
#include "shell/stance_preview.h"

namespace {

void Print(const std::wstring& text) { TarsaApp().Print(L"%s", text.c_str()); }

bool Starts(const std::wstring& text, const wchar_t* start) {
  return text.compare(0, std::wcslen(start), start) == 0;
}

// The ids an argument of "ids:" names: every object of that name, or the text as it stands.
std::vector<std::wstring> Ids(CTarsaDoc* doc, const std::wstring& list) {
  std::vector<std::wstring> ids;
  size_t at = 0;
  while (at <= list.size()) {
    size_t end = list.find(L',', at);
    if (end == std::wstring::npos) end = list.size();
    const std::wstring item = list.substr(at, end - at);
    bool named = false;
    for (const CTarsaObject* object :
         doc ? TsEveryObject(*doc) : std::vector<const CTarsaObject*>()) {
      if (!item.empty() && object->Attributes().m_name.CompareNoCase(item.c_str()) == 0) {
        ids.push_back(ZK_UuidToString(object->ModelObjectId()).Text());
        named = true;
      }
    }
    if (!named && !item.empty()) ids.push_back(item);
    at = end + 1;
  }
  return ids;
}

// A typed number that is finite and within the range of its type: false, with the reason in
// `problem`, otherwise.
bool ReadNumber(const std::wstring& typed, double& read, std::wstring& problem) {
  const std::wstring text = typed.substr(3);
  int consumed = 0;
  if (std::swscanf(text.c_str(), L"%lf%n", &read, &consumed) != 1 ||
      consumed != static_cast<int>(text.size()) || !std::isfinite(read)) {
    problem = L"Type a finite number after the type, as in i4:5 or r8:1.5.";
    return false;
  }
  const std::wstring kind = typed.substr(0, 2);
  const double limit = kind == L"i2"   ? std::numeric_limits<SHORT>::max()
                       : kind == L"i4" ? std::numeric_limits<LONG>::max()
                       : kind == L"r4" ? std::numeric_limits<FLOAT>::max()
                                       : std::numeric_limits<double>::max();
  // Integers take one more below zero than above.
  if (read > limit || read < -limit - (kind[0] == L'i' ? 1 : 0)) {
    problem = typed + L" is out of the range of " + kind + L".";
    return false;
  }
  return true;
}

// One typed argument as a variant: false, with the reason in `problem`, when a number does not
// read or does not fit its type.
bool Argument(CTarsaDoc* doc, const std::wstring& typed, VARIANT& value, std::wstring& problem) {
  VariantInit(&value);
  double read = 0;
  const std::wstring kind = typed.substr(0, 3);
  if (kind == L"i2:" || kind == L"i4:" || kind == L"r4:" || kind == L"r8:") {
    if (!ReadNumber(typed, read, problem)) return false;
    if (kind == L"i2:") {
      value.vt = VT_I2;
      value.iVal = static_cast<SHORT>(read);
    } else if (kind == L"i4:") {
      value.vt = VT_I4;
      value.lVal = static_cast<LONG>(read);
    } else if (kind == L"r4:") {
      value.vt = VT_R4;
      value.fltVal = static_cast<FLOAT>(read);
    } else {
      value.vt = VT_R8;
      value.dblVal = read;
    }
  } else if (typed == L"true" || typed == L"false") {
    value.vt = VT_BOOL;
    value.boolVal = typed == L"true" ? VARIANT_TRUE : VARIANT_FALSE;
  } else if (typed == L"missing") {
    value.vt = VT_ERROR;
    value.scode = DISP_E_PARAMNOTFOUND;
  } else if (Starts(typed, L"ids:")) {
    const std::vector<std::wstring> ids = Ids(doc, typed.substr(4));
    SAFEARRAYBOUND bound{static_cast<ULONG>(ids.size()), 0};
    value.vt = VT_ARRAY | VT_VARIANT;
    value.parray = SafeArrayCreate(VT_VARIANT, 1, &bound);
    for (LONG i = 0; i < static_cast<LONG>(ids.size()); ++i) {
      VARIANT element;
      element.vt = VT_BSTR;
      element.bstrVal = SysAllocString(ids[static_cast<size_t>(i)].c_str());
      SafeArrayPutElement(value.parray, &i, &element);
      VariantClear(&element);
    }
  } else {
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString((Starts(typed, L"text:") ? typed.substr(5) : typed).c_str());
  }
  return true;
}

std::wstring Shown(const VARIANT& value) {
  switch (value.vt) {
    case VT_NULL:
      return L"Null";
    case VT_EMPTY:
      return L"Empty";
    case VT_BOOL:
      return value.boolVal ? L"True" : L"False";
    case VT_I2:
      return std::to_wstring(value.iVal);
    case VT_I4:
      return std::to_wstring(value.lVal);
    case VT_R8:
      return TsFormatNumber(value.dblVal);
    case VT_BSTR:
      return L"\"" + std::wstring(value.bstrVal ? value.bstrVal : L"") + L"\"";
  }
  if (value.vt == (VT_ARRAY | VT_VARIANT)) {
    LONG low = 0, high = -1;
    SafeArrayGetLBound(value.parray, 1, &low);
    SafeArrayGetUBound(value.parray, 1, &high);
    std::wstring shown = L"an array of " + std::to_wstring(high - low + 1) + L":";
    for (LONG i = low; i <= high; ++i) {
      VARIANT element;
      VariantInit(&element);
      SafeArrayGetElement(value.parray, &i, &element);
      shown += L"\n  " + Shown(element);
      VariantClear(&element);
    }
    return shown;
  }
  return L"a value of type " + std::to_wstring(value.vt);
}

class ScriptCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext& context) override {
    std::wstring method;
    if (!TsAskForText(L"Method of the script object", method)) return cancel;
    std::vector<VARIANT> arguments;
    const result asked = AskForArguments(context.Document(), arguments);
    const result called = asked == success ? Call(method, arguments) : asked;
    for (VARIANT& argument : arguments) VariantClear(&argument);
    return called;
  }

 private:
  static result AskForArguments(CTarsaDoc* doc, std::vector<VARIANT>& arguments) {
    for (;;) {
      CTarsaGetString get;
      const std::wstring prompt =
          L"Argument " + std::to_wstring(arguments.size() + 1) + L" <Enter: call>";
      get.SetCommandPrompt(prompt.c_str());
      get.AcceptNothing(true);
      const CTarsaGet::result answer = get.GetString();
      if (answer == CTarsaGet::cancel) return cancel;
      if (answer != CTarsaGet::string || *get.String() == 0) return success;
      VARIANT value;
      std::wstring problem;
      if (Argument(doc, get.String(), value, problem)) {
        arguments.push_back(value);
      } else {
        Print(problem + L"\n");
      }
    }
  }

  static result Call(std::wstring method, std::vector<VARIANT>& arguments) {
    IDispatch* script = TsScriptObject();
    if (script == nullptr) {
      Print(L"No plug-in offers a script object.\n");
      return failure;
    }
    LPOLESTR name = &method[0];
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(script->GetIDsOfNames(IID_NULL, &name, 1, 0, &id))) {
      script->Release();
      Print(L"The script object has no method " + method + L".\n");
      return failure;
    }
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());  // last first
    DISPPARAMS params{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    VARIANT value;
    VariantInit(&value);
    const HRESULT called =
        script->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &params, &value, nullptr, nullptr);
    script->Release();
    if (FAILED(called)) {
      wchar_t code[16];
      std::swprintf(code, 16, L"0x%08X", static_cast<unsigned int>(called));
      Print(L"The call failed (" + std::wstring(code) + L").\n");
      return failure;
    }
    Print(L"Result: " + Shown(value) + L"\n");
    VariantClear(&value);
    return success;
  }
};

ScriptCommand theScriptCommand(L"Script", "7C1E0A10-0401-4B2C-9D3E-4F5A6B7C8D9E");

}  // namespace
