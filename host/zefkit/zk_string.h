// ZK_wString: the kernel's wide-character string, used for every name and message text.
// A value type. wchar_t holds one Unicode code point (UTF-32).
//
// Copies share one buffer (count, length and characters in a single allocation) until one of them
// changes, so that copying a table of names costs a count per name, not an allocation and a copy
// of the text. The count is atomic: copies may live on different threads. A string holds at most
// 2^31 - 1 characters (what Length can tell); making a longer one throws std::length_error, as
// the standard string does past its own limit.
#pragma once

#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

class ZK_wString {
 public:
  ZK_wString() = default;
  ZK_wString(const wchar_t* text);  // null is the empty string
  ZK_wString(const wchar_t* text, int length);
  ZK_wString(const std::wstring& text);
  ZK_wString(const ZK_wString& other) noexcept;
  ZK_wString(ZK_wString&& other) noexcept : m_buffer(other.m_buffer) { other.m_buffer = nullptr; }
  ZK_wString& operator=(const ZK_wString& other) noexcept;
  ZK_wString& operator=(ZK_wString&& other) noexcept;
  ~ZK_wString() { Release(); }

  // Decodes UTF-8; every byte that is not part of a well-formed sequence becomes U+FFFD.
  static ZK_wString FromUtf8(const std::string& utf8);
  // Encodes as UTF-8; a value that is no Unicode scalar becomes U+FFFD.
  std::string ToUtf8() const;

  int Length() const { return m_buffer ? static_cast<int>(m_buffer->length) : 0; }
  bool IsEmpty() const { return Length() == 0; }
  void Empty() { Release(); }
  // The characters, followed by a zero; valid until this string next changes or ends.
  const wchar_t* Array() const { return m_buffer ? m_buffer->Characters() : L""; }
  operator const wchar_t*() const { return Array(); }
  std::wstring_view View() const { return {Array(), static_cast<size_t>(Length())}; }
  // A copy of the characters.
  std::wstring Text() const { return std::wstring(View()); }

  // Room for `length` characters to be written in place, for code that builds a text whose length
  // it knows at most: the string gets characters of its own, its first `length` as they were.
  // Valid until ReleaseBuffer, which must follow; null, and the string empty, for a length of 0 or
  // less.
  wchar_t* GetBuffer(int length);
  // Ends GetBuffer: the string is the first `length` characters written, at most as many as were
  // asked for; empty for a length of 0 or less.
  void ReleaseBuffer(int length);

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
  // The shared characters: the count of strings that share them, how many there are, and room
  // for `capacity` and a terminating zero, all in one allocation.
  struct Buffer {
    std::atomic<int> references;
    size_t length;
    size_t capacity;
    wchar_t* Characters() { return reinterpret_cast<wchar_t*>(this + 1); }
    const wchar_t* Characters() const { return reinterpret_cast<const wchar_t*>(this + 1); }
  };
  static_assert(alignof(Buffer) % alignof(wchar_t) == 0 && sizeof(Buffer) % sizeof(wchar_t) == 0,
                "the characters follow the buffer's header");

  // A buffer of its own for `length` characters copied from `text`, with room for `capacity`.
  static Buffer* NewBuffer(const wchar_t* text, size_t length, size_t capacity);
  void Assign(const wchar_t* text, size_t length);
  void Append(const wchar_t* text, size_t length);
  void Release() noexcept;

  Buffer* m_buffer = nullptr;  // null for the empty string
};

// Hashes the characters, so that strings, folded names for instance, can key unordered sets:
// FNV-1a over the code points, a few instructions a character for the short texts names are.
namespace std {
template <>
struct hash<ZK_wString> {
  size_t operator()(const ZK_wString& text) const noexcept {
    uint64_t hash = 14695981039346656037ull;
    for (wchar_t c : text.View()) hash = (hash ^ static_cast<uint32_t>(c)) * 1099511628211ull;
    return static_cast<size_t>(hash);
  }
};
}  // namespace std

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
