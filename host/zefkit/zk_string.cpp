#include "host/zefkit/zk_string.h"

#include <locale.h>
#include <algorithm>
#include <clocale>
#include <cwchar>
#include <cwctype>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

constexpr wchar_t kReplacement = 0xFFFD;
constexpr size_t kMaximumLength = 0x7FFFFFFF;

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

// FoldCase beyond ASCII: upper then lower, so that final sigma, sigma and capital sigma all meet.
__attribute__((noinline)) wint_t FoldWithLocale(wchar_t c) {
  const locale_t locale = CaseLocale();
  if (locale == nullptr) return c;
  return towlower_l(towupper_l(static_cast<wint_t>(c), locale), locale);
}

// Maps every case variant of a letter to one value. ASCII folds inline, without the locale: its
// tables map every ASCII letter to its lower case.
inline wint_t FoldCase(wchar_t c) {
  if (c >= 0 && c < 0x80) return (c >= L'A' && c <= L'Z') ? c + 32 : c;
  return FoldWithLocale(c);
}

int Sign(long long difference) { return difference < 0 ? -1 : (difference > 0 ? 1 : 0); }

bool IsDefaultBlank(wchar_t c) {
  return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n' || c == L'\v' || c == L'\f';
}

// Rewrites a host-platform format for the C library: a "%s" or "%c" without a length modifier
// becomes "%ls" or "%lc", since on the host's platform they take wide arguments.
std::wstring WidenConversions(const wchar_t* format) {
  std::wstring out;
  out.reserve(std::wcslen(format) + 8);  // room for a few added 'l's
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

ZK_wString::ZK_wString(const wchar_t* text) {
  if (text) Assign(text, std::wcslen(text));
}

ZK_wString::ZK_wString(const wchar_t* text, int length) {
  if (text && length > 0) Assign(text, static_cast<size_t>(length));
}

ZK_wString::ZK_wString(const std::wstring& text) { Assign(text.data(), text.size()); }

ZK_wString::ZK_wString(const ZK_wString& other) noexcept : m_buffer(other.m_buffer) {
  if (m_buffer) m_buffer->references.fetch_add(1, std::memory_order_relaxed);
}

ZK_wString& ZK_wString::operator=(const ZK_wString& other) noexcept {
  if (other.m_buffer) other.m_buffer->references.fetch_add(1, std::memory_order_relaxed);
  Release();
  m_buffer = other.m_buffer;
  return *this;
}

ZK_wString& ZK_wString::operator=(ZK_wString&& other) noexcept {
  if (this == &other) return *this;
  Release();
  m_buffer = other.m_buffer;
  other.m_buffer = nullptr;
  return *this;
}

ZK_wString::Buffer* ZK_wString::NewBuffer(const wchar_t* text, size_t length, size_t capacity) {
  // As many characters as Length can tell; beyond that the string fails as the standard one does.
  if (capacity > kMaximumLength) throw std::length_error("ZK_wString too long");
  void* memory = ::operator new(sizeof(Buffer) + (capacity + 1) * sizeof(wchar_t));
  Buffer* buffer = new (memory) Buffer{{1}, length, capacity};
  if (length > 0) std::wmemcpy(buffer->Characters(), text, length);
  buffer->Characters()[length] = 0;
  return buffer;
}

void ZK_wString::Assign(const wchar_t* text, size_t length) {
  Buffer* replacement = length > 0 ? NewBuffer(text, length, length) : nullptr;
  Release();
  m_buffer = replacement;
}

void ZK_wString::Append(const wchar_t* text, size_t length) {
  if (length == 0) return;
  const size_t old_length = static_cast<size_t>(Length());
  const bool own = m_buffer && m_buffer->references.load(std::memory_order_acquire) == 1;
  if (!own || m_buffer->capacity - old_length < length) {
    // Doubling keeps a run of appends linear; `text` may lie in the old buffer, which is released
    // only once the new one holds both parts.
    const size_t doubled = own ? std::min(2 * m_buffer->capacity, kMaximumLength) : 0;
    const size_t capacity = std::max(old_length + length, doubled);
    Buffer* grown = NewBuffer(Array(), old_length, capacity);
    std::wmemcpy(grown->Characters() + old_length, text, length);
    Release();
    m_buffer = grown;
  } else {
    std::wmemmove(m_buffer->Characters() + old_length, text, length);
  }
  m_buffer->length = old_length + length;
  m_buffer->Characters()[m_buffer->length] = 0;
}

wchar_t* ZK_wString::GetBuffer(int length) {
  if (length <= 0) {
    Release();
    return nullptr;
  }
  const size_t room = static_cast<size_t>(length);
  Buffer* own = NewBuffer(Array(), std::min(room, static_cast<size_t>(Length())), room);
  Release();
  m_buffer = own;
  return own->Characters();
}

void ZK_wString::ReleaseBuffer(int length) {
  if (m_buffer == nullptr) return;
  const size_t kept = length > 0 ? std::min(static_cast<size_t>(length), m_buffer->capacity) : 0;
  if (kept == 0) {
    Release();
    return;
  }
  if (m_buffer->references.load(std::memory_order_acquire) != 1) {
    // Not after GetBuffer: the copies keep their text, and only characters there ever were count.
    Assign(Array(), std::min(kept, m_buffer->length));
    return;
  }
  m_buffer->length = kept;
  m_buffer->Characters()[kept] = 0;
}

void ZK_wString::Release() noexcept {
  if (m_buffer == nullptr) return;
  if (m_buffer->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    m_buffer->~Buffer();
    ::operator delete(m_buffer);
  }
  m_buffer = nullptr;
}

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
  out.reserve(static_cast<size_t>(Length()));
  for (wchar_t w : View()) {
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
  const wchar_t* a = Array();
  for (; *a && *a == *other; ++a, ++other) {
  }
  return Sign(static_cast<long long>(*a) - static_cast<long long>(*other));
}

ZK_wString ZK_wString::CaseFolded() const {
  if (IsEmpty()) return ZK_wString();
  ZK_wString folded(*this);
  wchar_t* characters = folded.GetBuffer(Length());
  for (int i = 0; i < Length(); ++i) characters[i] = static_cast<wchar_t>(FoldCase(characters[i]));
  folded.ReleaseBuffer(Length());
  return folded;
}

int ZK_wString::CompareNoCase(const wchar_t* other) const {
  if (other == nullptr) other = L"";
  for (const wchar_t* a = Array();; ++a, ++other) {
    if (*a == *other) {
      if (*a == 0) return 0;
      continue;
    }
    // Only the end of a text folds to zero, so an end against a character always differs here.
    const wint_t fa = FoldCase(*a);
    const wint_t fb = FoldCase(*other);
    if (fa != fb) return Sign(static_cast<long long>(fa) - static_cast<long long>(fb));
  }
}

void ZK_wString::TrimLeftAndRight(const wchar_t* characters) {
  auto trimmed = [characters](wchar_t c) {
    return characters ? std::wcschr(characters, c) != nullptr && c != 0 : IsDefaultBlank(c);
  };
  const wchar_t* text = Array();
  size_t end = static_cast<size_t>(Length());
  while (end > 0 && trimmed(text[end - 1])) --end;
  size_t begin = 0;
  while (begin < end && trimmed(text[begin])) ++begin;
  if (begin > 0 || end < static_cast<size_t>(Length())) Assign(text + begin, end - begin);
}

bool ZK_wString::Format(const wchar_t* format, ...) {
  va_list args;
  va_start(args, format);
  const bool ok = FormatVargs(format, args);
  va_end(args);
  return ok;
}

bool ZK_wString::FormatVargs(const wchar_t* format, va_list args) {
  // The arguments may be this string's own characters: they stay until the result replaces them.
  if (format == nullptr) {
    Release();
    return false;
  }
  const std::wstring widened = WidenConversions(format);
  // vswprintf cannot say how much room it needs: grow until the text fits, up to a bound that
  // keeps a runaway width from eating memory. Most texts fit the first try, on the stack.
  constexpr size_t kFirst = 256;
  constexpr size_t kMaximum = size_t{1} << 24;
  wchar_t first[kFirst];
  std::vector<wchar_t> grown;
  for (size_t size = kFirst; size <= kMaximum; size *= 4) {
    if (size > kFirst) grown.resize(size);
    wchar_t* buffer = size > kFirst ? grown.data() : first;
    va_list copy;
    va_copy(copy, args);
    const int written = std::vswprintf(buffer, size, widened.c_str(), copy);
    va_end(copy);
    if (written >= 0) {
      Assign(buffer, static_cast<size_t>(written));
      return true;
    }
  }
  Release();
  return false;
}

ZK_wString ZK_FormatVargs(const wchar_t* format, va_list args) {
  ZK_wString text;
  text.FormatVargs(format, args);
  return text;
}

ZK_wString& ZK_wString::operator+=(const ZK_wString& other) {
  if (IsEmpty()) return *this = other;
  Append(other.Array(), static_cast<size_t>(other.Length()));
  return *this;
}

ZK_wString& ZK_wString::operator+=(const wchar_t* other) {
  if (other) Append(other, std::wcslen(other));
  return *this;
}

ZK_wString& ZK_wString::operator+=(wchar_t c) {
  Append(&c, 1);
  return *this;
}

ZK_wString operator+(const ZK_wString& a, const ZK_wString& b) {
  ZK_wString sum(a);
  sum += b;
  return sum;
}

ZK_wString operator+(const ZK_wString& a, const wchar_t* b) { return a + ZK_wString(b); }
ZK_wString operator+(const wchar_t* a, const ZK_wString& b) { return ZK_wString(a) + b; }

bool operator==(const ZK_wString& a, const ZK_wString& b) { return a.View() == b.View(); }
bool operator==(const ZK_wString& a, const wchar_t* b) { return a.Compare(b) == 0; }
bool operator==(const wchar_t* a, const ZK_wString& b) { return b.Compare(a) == 0; }
bool operator!=(const ZK_wString& a, const ZK_wString& b) { return !(a == b); }
bool operator!=(const ZK_wString& a, const wchar_t* b) { return !(a == b); }
bool operator!=(const wchar_t* a, const ZK_wString& b) { return !(a == b); }
