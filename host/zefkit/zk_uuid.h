// Kernel uuids: the 16-byte identifiers of stances, object attributes, classes, user data and
// plug-ins. Plain values; every function here is pure except ZK_CreateUuid.
#pragma once

#include <cstddef>
#include <cstring>

#include "host/zefkit/zk_string.h"

struct ZK_UUID {
  unsigned int Data1;
  unsigned short Data2;
  unsigned short Data3;
  unsigned char Data4[8];
};

static_assert(sizeof(ZK_UUID) == 16, "a uuid is 16 bytes");

extern const ZK_UUID ZK_nil_uuid;

// True when all 16 bytes are zero.
bool ZK_UuidIsNil(const ZK_UUID& uuid);

// Orders two uuids field by field, all 16 bytes taking part: <0, 0 (identical) or >0.
int ZK_UuidCompare(const ZK_UUID& a, const ZK_UUID& b);

// Makes a new random (version 4) uuid. False, with `uuid` left as it was, when no uuid can be made.
bool ZK_CreateUuid(ZK_UUID& uuid);

// The 8-4-4-4-12 text in upper-case hex, without braces.
ZK_wString ZK_UuidToString(const ZK_UUID& uuid);

// Parses 8-4-4-4-12 hex in either letter case, with or without braces, with blanks around it.
// Anything else gives the nil uuid.
ZK_UUID ZK_UuidFromString(const char* text);
ZK_UUID ZK_UuidFromString(const wchar_t* text);

// Hashes a uuid for unordered containers.
struct ZK_UuidHash {
  size_t operator()(const ZK_UUID& uuid) const {
    unsigned long long halves[2];
    std::memcpy(halves, &uuid, sizeof halves);
    // Random uuids are already well mixed; the multiplication spreads sequential ones too.
    return static_cast<size_t>((halves[0] ^ (halves[1] * 0x9E3779B97F4A7C15ull)) *
                               0xBF58476D1CE4E5B9ull);
  }
};

// Equality looks at all sixteen bytes at once; the order is ZK_UuidCompare's.
inline bool operator==(const ZK_UUID& a, const ZK_UUID& b) {
  return std::memcmp(&a, &b, sizeof(ZK_UUID)) == 0;
}
inline bool operator!=(const ZK_UUID& a, const ZK_UUID& b) { return !(a == b); }
inline bool operator<(const ZK_UUID& a, const ZK_UUID& b) { return ZK_UuidCompare(a, b) < 0; }
