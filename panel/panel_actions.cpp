#include "panel/panel_actions.h"

#include "data/stance_table.h"
#include "host/tarsa/tarsa_doc.h"
#include "host/tarsa/tarsa_localize.h"
#include "plugin/korvo_plugin.h"

namespace {

std::wstring Format(const wchar_t* format, const wchar_t* a, const wchar_t* b, const wchar_t* c,
                    const wchar_t* d = nullptr) {
  ZK_wString text;
  text.Format(format, a, b, c, d);
  return text.Text();
}

}  // namespace

std::wstring QuoteName(const wchar_t* name) {
  if (name == nullptr || *name == 0) return L"";
  std::wstring quoted = L"\"";
  for (const wchar_t* c = name; *c; ++c) {
    quoted += *c;
    if (*c == L'"') quoted += L'"';
  }
  return quoted + L"\"";
}

std::wstring NameMacro(const wchar_t* command, const wchar_t* option, const std::wstring& quoted) {
  return Format(L"!-_%s _%s %s _ENTER", command, option, quoted.c_str());
}

std::wstring PausingNameMacro(const wchar_t* command, const wchar_t* option,
                              const std::wstring& quoted) {
  return Format(L"!-_%s _%s %s _PAUSE _ENTER", command, option, quoted.c_str());
}

std::wstring CommandMacro(const wchar_t* command, const std::wstring& quoted) {
  return Format(L"!-_%s %s", command, quoted.c_str(), nullptr);
}

bool IsSaveOption(const wchar_t* option) { return ZK_wString(option).CompareNoCase(L"Save") == 0; }

std::wstring StandardActionMacro(const wchar_t* command, const wchar_t* option,
                                 const std::wstring& quoted_first,
                                 const std::wstring& quoted_second) {
  if (!IsSaveOption(option)) {
    return Format(L"!-_%s _%s %s %s _ENTER", command, option, quoted_first.c_str(),
                  quoted_second.c_str());
  }
  if (quoted_second.empty()) return PausingNameMacro(command, option, quoted_first);
  return Format(L"!-_%s _%s %s _PAUSE %s _ENTER", command, option, quoted_first.c_str(),
                quoted_second.c_str());
}

std::wstring NewStanceName(CTarsaDoc& doc) {
  // One pass over the table, then at most one candidate more than there are stances.
  const CKorvoNameSet taken = KorvoPlugIn().DocData(doc.RuntimeSerialNumber())->Names();
  const wchar_t* format = TsLocalizeString(L"Position %02d", 28191);
  ZK_wString name;
  for (int n = 1;; ++n) {
    if (!name.Format(format, n)) return L"";
    if (taken.count(name) == 0) return name.Text();
  }
}
