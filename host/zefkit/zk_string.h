// ZK_wString: the kernel's wide-character string, used for every name and message text.
// A value type; it owns its characters. wchar_t holds one Unicode code point (UTF-32).
#pragma once

#include <cstdarg>
#include <string>

class ZK_wString {
 public:
  ZK_wString() = default;
  ZK_wString(const wchar_t* text);  // null is the empty string
  ZK_wString(const wchar_t* text, int length);
  ZK_wString(const std::wstring& text);
  ZK_wString(std::wstring&& text);

  // Decodes UTF-8; every byte that is not part of a well-formed sequence becomes U+FFFD.
  static ZK_wString FromUtf8(const std::string& utf8);
  // Encodes as UTF-8; a value that is no Unicode scalar becomes U+FFFD.
  std::string ToUtf8() const;

  int Length() const { return static_cast<int>(m_text.size()); }
  bool IsEmpty() const { return m_text.empty(); }
  void Empty() { m_text.clear(); }
  const wchar_t* Array() const { return m_text.c_str(); }
  operator const wchar_t*() const { return m_text.c_str(); }
  const std::wstring& Text() const { return m_text; }

  // <0, 0 or >0, code point by code point; exact.
  int Compare(const wchar_t* other) const;
  // As Compare, but letters that differ only in case are equal (Ä/ä, Σ/σ/ς, Ж/ж ...), by the
  // case tables of the C library's UTF-8 locale whatever locale the program runs with.
  int CompareNoCase(const wchar_t* other) const;
  // The text with every letter folded as CompareNoCase folds it: two texts compare equal ignoring
  // case exactly when their folded forms are equal, so folded forms serve as keys of a set.
  ZK_wString CaseFolded() const;

  // Removes blanks (space, tab, CR, LF, VT, FF) from both ends, or else the characters given.
  void TrimLeftAndRight(const wchar_t* characters = nullptr);

  // printf-style formatting in which "%s" and "%c" take wide arguments, as on the host's
  // platform. True when formatting succeeded; on failure the string is empty.
  bool Format(const wchar_t* format, ...);
  bool FormatVargs(const wchar_t* format, va_list args);

  ZK_wString& operator+=(const ZK_wString& other);
  ZK_wString& operator+=(const wchar_t* other);
  ZK_wString& operator+=(wchar_t c);

 private:
  std::wstring m_text;
};

// Returns the formatted text, as ZK_wString::FormatVargs; empty on failure.
ZK_wString ZK_FormatVargs(const wchar_t* format, va_list args);

ZK_wString operator+(const ZK_wString& a, const ZK_wString& b);
ZK_wString operator+(const ZK_wString& a, const wchar_t* b);
ZK_wString operator+(const wchar_t* a, const ZK_wString& b);

bool operator==(const ZK_wString& a, const ZK_wString& b);
bool operator==(const ZK_wString& a, const wchar_t* b);
bool operator==(const wchar_t* a, const ZK_wString& b);
bool operator!=(const ZK_wString& a, const ZK_wString& b);
bool operator!=(const ZK_wString& a, const wchar_t* b);
bool operator!=(const wchar_t* a, const ZK_wString& b);
