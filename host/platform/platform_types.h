// The few platform types the host's interfaces use, with the platform's fixed sizes.
#pragma once

#include <cstdint>

struct HWND__;
typedef HWND__* HWND;

typedef std::int16_t SHORT;
typedef std::uint16_t USHORT;
typedef std::uint16_t WORD;
typedef std::int32_t LONG;
typedef std::uint32_t ULONG;
typedef std::int64_t LONGLONG;
typedef unsigned int UINT;
typedef unsigned char BYTE;
typedef int BOOL;
constexpr BOOL TRUE = 1;
constexpr BOOL FALSE = 0;
typedef float FLOAT;
typedef double DOUBLE;

// Outcomes of the platform's object calls: zero or positive is success, negative a failure code.
typedef std::int32_t HRESULT;
typedef HRESULT SCODE;
