// CString: the platform class library's wide-character string, a value type that owns its
// characters. Code that hands text to scripts makes BSTRs from it.
#pragma once

#include <string>

#include "host/platform/automation.h"

class CString {
 public:
  CString() = default;
  CString(const wchar_t* text) : m_text(text ? text : L"") {}  // null is the empty string

  int GetLength() const { return static_cast<int>(m_text.size()); }
  bool IsEmpty() const { return m_text.empty(); }
  const wchar_t* GetString() const { return m_text.c_str(); }
  operator const wchar_t*() const { return m_text.c_str(); }

  // A new BSTR holding a copy of the text, or null when out of memory. The caller owns it and
  // frees it with SysFreeString (or hands it to a VARIANT that then owns it).
  BSTR AllocSysString() const {
    return SysAllocStringLen(m_text.data(), static_cast<UINT>(m_text.size()));
  }

 private:
  std::wstring m_text;
};
