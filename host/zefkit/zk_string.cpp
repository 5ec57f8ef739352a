#include "host/zefkit/zk_string.h"

#include <locale.h>
#include <clocale>
#include <cwchar>
#include <cwctype>
#include <utility>
#include <vector>

namespace {

constexpr wchar_t kReplacement = 0xFFFD;

// The length of the UTF-8 sequence that `lead` starts; 0 for a byte that cannot start one.
size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xC2) return 0;
  if (lead < 0xE0) return 2;
  if (lead < 0xF0) return 3;
  return lead < 0xF5 ? 4 : 0;
}

bool IsScalar(unsigned long c) { return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF); }

// The UTF-8 locale whose case tables CompareNoCase uses, opened once; null when the C library
// has none, in which case only ASCII letters fold.
locale_t CaseLocale() {
  static const locale_t locale = [] {
    for (const char* name : {"C.UTF-8", "C.utf8", "en_US.UTF-8"}) {
      if (locale_t l = newlocale(LC_CTYPE_MASK, name, static_cast<locale_t>(nullptr))) return l;
    }
    return static_cast<locale_t>(nullptr);
  }();
  return locale;
}

// Maps every case variant of a letter to one value: upper then lower, so that final sigma,
// sigma and capital sigma all meet.
// ASCII folds without the locale: its tables map every ASCII letter to its lower case.
wint_t FoldCase(wchar_t c) {
  if (c >= 0 && c < 0x80) return (c >= L'A' && c <= L'Z') ? c + 32 : c;
  const locale_t locale = CaseLocale();
  if (locale == nullptr) return c;
  return towlower_l(towupper_l(static_cast<wint_t>(c), locale), locale);
}

int Sign(long long difference) { return difference < 0 ? -1 : (difference > 0 ? 1 : 0); }

bool IsDefaultBlank(wchar_t c) {
  return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n' || c == L'\v' || c == L'\f';
}

// Rewrites a host-platform format for the C library: a "%s" or "%c" without a length modifier
// becomes "%ls" or "%lc", since on the host's platform they take wide arguments.
std::wstring WidenConversions(const wchar_t* format) {
  std::wstring out;
  for (const wchar_t* p = format; *p; ++p) {
    out += *p;
    if (*p != L'%') continue;
    if (p[1] == L'%') {
      out += *++p;
      continue;
    }
    bool has_length = false;
    while (p[1] && std::wcschr(L"-+ #0123456789.*hlLqjzt", p[1])) {
      ++p;
      has_length = has_length || std::wcschr(L"hlLqjzt", *p) != nullptr;
      out += *p;
    }
    if (!has_length && (p[1] == L's' || p[1] == L'c')) out += L'l';
  }
  return out;
}

}  // namespace

ZK_wString::ZK_wString(const wchar_t* text) : m_text(text ? text : L"") {}

ZK_wString::ZK_wString(const wchar_t* text, int length) {
  if (text && length > 0) m_text.assign(text, static_cast<size_t>(length));
}

ZK_wString::ZK_wString(const std::wstring& text) : m_text(text) {}

ZK_wString::ZK_wString(std::wstring&& text) : m_text(std::move(text)) {}

ZK_wString ZK_wString::FromUtf8(const std::string& utf8) {
  std::wstring out;
  out.reserve(utf8.size());
  const auto* s = reinterpret_cast<const unsigned char*>(utf8.data());
  const size_t n = utf8.size();
  for (size_t i = 0; i < n;) {
    const size_t length = SequenceLength(s[i]);
    bool ok = length > 0 && i + length <= n;
    unsigned long c = length > 1 ? s[i] & (0xFFu >> (length + 1)) : s[i];
    for (size_t k = 1; ok && k < length; ++k) {
      ok = (s[i + k] & 0xC0) == 0x80;
      c = (c << 6) | (s[i + k] & 0x3F);
    }
    static const unsigned long kMinimum[] = {0, 0, 0x80, 0x800, 0x10000};
    if (!ok || c < kMinimum[length] || !IsScalar(c)) {
      out += kReplacement;
      ++i;
      continue;
    }
    out += static_cast<wchar_t>(c);
    i += length;
  }
  return ZK_wString(out);
}

std::string ZK_wString::ToUtf8() const {
  std::string out;
  out.reserve(m_text.size());
  for (wchar_t w : m_text) {
    unsigned long c = static_cast<unsigned long>(w);
    if (!IsScalar(c)) c = kReplacement;
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += static_cast<char>(0xC0 | (c >> 6));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      out += static_cast<char>(0xE0 | (c >> 12));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | (c >> 18));
      out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return out;
}

int ZK_wString::Compare(const wchar_t* other) const {
  if (other == nullptr) other = L"";
  const wchar_t* a = m_text.c_str();
  for (; *a && *a == *other; ++a, ++other) {
  }
  return Sign(static_cast<long long>(*a) - static_cast<long long>(*other));
}

ZK_wString ZK_wString::CaseFolded() const {
  std::wstring folded(m_text.size(), L'\0');
  for (size_t i = 0; i < m_text.size(); ++i) folded[i] = static_cast<wchar_t>(FoldCase(m_text[i]));
  return ZK_wString(std::move(folded));
}

int ZK_wString::CompareNoCase(const wchar_t* other) const {
  if (other == nullptr) other = L"";
  for (const wchar_t* a = m_text.c_str();; ++a, ++other) {
    const wint_t fa = FoldCase(*a);
    const wint_t fb = FoldCase(*other);
    if (fa != fb || *a == 0 || *other == 0) {
      return Sign(static_cast<long long>(fa) - static_cast<long long>(fb));
    }
  }
}

void ZK_wString::TrimLeftAndRight(const wchar_t* characters) {
  auto trimmed = [characters](wchar_t c) {
    return characters ? std::wcschr(characters, c) != nullptr && c != 0 : IsDefaultBlank(c);
  };
  size_t end = m_text.size();
  while (end > 0 && trimmed(m_text[end - 1])) --end;
  size_t begin = 0;
  while (begin < end && trimmed(m_text[begin])) ++begin;
  m_text = m_text.substr(begin, end - begin);
}

bool ZK_wString::Format(const wchar_t* format, ...) {
  va_list args;
  va_start(args, format);
  const bool ok = FormatVargs(format, args);
  va_end(args);
  return ok;
}

bool ZK_wString::FormatVargs(const wchar_t* format, va_list args) {
  m_text.clear();
  if (format == nullptr) return false;
  const std::wstring widened = WidenConversions(format);
  // vswprintf cannot say how much room it needs: grow until the text fits, up to a bound that
  // keeps a runaway width from eating memory.
  constexpr size_t kMaximum = size_t{1} << 24;
  for (size_t size = 256; size <= kMaximum; size *= 4) {
    std::vector<wchar_t> buffer(size);
    va_list copy;
    va_copy(copy, args);
    const int written = std::vswprintf(buffer.data(), size, widened.c_str(), copy);
    va_end(copy);
    if (written >= 0) {
      m_text.assign(buffer.data(), static_cast<size_t>(written));
      return true;
    }
  }
  return false;
}

ZK_wString ZK_FormatVargs(const wchar_t* format, va_list args) {
  ZK_wString text;
  text.FormatVargs(format, args);
  return text;
}

ZK_wString& ZK_wString::operator+=(const ZK_wString& other) {
  m_text += other.m_text;
  return *this;
}

ZK_wString& ZK_wString::operator+=(const wchar_t* other) {
  if (other) m_text += other;
  return *this;
}

ZK_wString& ZK_wString::operator+=(wchar_t c) {
  m_text += c;
  return *this;
}

ZK_wString operator+(const ZK_wString& a, const ZK_wString& b) {
  ZK_wString sum(a);
  sum += b;
  return sum;
}

ZK_wString operator+(const ZK_wString& a, const wchar_t* b) { return a + ZK_wString(b); }
ZK_wString operator+(const wchar_t* a, const ZK_wString& b) { return ZK_wString(a) + b; }

bool operator==(const ZK_wString& a, const ZK_wString& b) { return a.Text() == b.Text(); }
bool operator==(const ZK_wString& a, const wchar_t* b) { return a.Compare(b) == 0; }
bool operator==(const wchar_t* a, const ZK_wString& b) { return b.Compare(a) == 0; }
bool operator!=(const ZK_wString& a, const ZK_wString& b) { return !(a == b); }
bool operator!=(const ZK_wString& a, const wchar_t* b) { return !(a == b); }
bool operator!=(const wchar_t* a, const ZK_wString& b) { return !(a == b); }
