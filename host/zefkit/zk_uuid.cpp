#include "host/zefkit/zk_uuid.h"

#include <cstdio>
#include <cstring>
#include <random>

#include "host/zefkit/standin/zk_testing.h"
#include "host/zefkit/standin/zk_uuid_seed.h"

const ZK_UUID ZK_nil_uuid = {0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0}};

namespace {

bool g_fail_create_uuid = false;

std::mt19937_64& Generator() {
  static std::mt19937_64 generator{std::random_device{}()};
  return generator;
}

// The 16 bytes in the order they are printed: Data1..Data3 most significant byte first.
void ToBytes(const ZK_UUID& uuid, unsigned char bytes[16]) {
  for (int i = 0; i < 4; ++i) bytes[i] = static_cast<unsigned char>(uuid.Data1 >> (24 - 8 * i));
  bytes[4] = static_cast<unsigned char>(uuid.Data2 >> 8);
  bytes[5] = static_cast<unsigned char>(uuid.Data2);
  bytes[6] = static_cast<unsigned char>(uuid.Data3 >> 8);
  bytes[7] = static_cast<unsigned char>(uuid.Data3);
  std::memcpy(bytes + 8, uuid.Data4, 8);
}

ZK_UUID FromBytes(const unsigned char bytes[16]) {
  ZK_UUID uuid;
  uuid.Data1 = (unsigned(bytes[0]) << 24) | (unsigned(bytes[1]) << 16) | (unsigned(bytes[2]) << 8) |
               unsigned(bytes[3]);
  uuid.Data2 = static_cast<unsigned short>((bytes[4] << 8) | bytes[5]);
  uuid.Data3 = static_cast<unsigned short>((bytes[6] << 8) | bytes[7]);
  std::memcpy(uuid.Data4, bytes + 8, 8);
  return uuid;
}

int HexValue(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  return -1;
}

bool IsBlank(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n'; }

}  // namespace

bool ZK_UuidIsNil(const ZK_UUID& uuid) { return ZK_UuidCompare(uuid, ZK_nil_uuid) == 0; }

int ZK_UuidCompare(const ZK_UUID& a, const ZK_UUID& b) {
  if (a.Data1 != b.Data1) return a.Data1 < b.Data1 ? -1 : 1;
  if (a.Data2 != b.Data2) return a.Data2 < b.Data2 ? -1 : 1;
  if (a.Data3 != b.Data3) return a.Data3 < b.Data3 ? -1 : 1;
  return std::memcmp(a.Data4, b.Data4, 8);
}

bool ZK_CreateUuid(ZK_UUID& uuid) {
  if (g_fail_create_uuid) return false;
  unsigned char bytes[16];
  for (int i = 0; i < 16; i += 8) {
    const unsigned long long bits = Generator()();
    std::memcpy(bytes + i, &bits, 8);
  }
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);  // version 4
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);  // RFC 4122 variant
  uuid = FromBytes(bytes);
  return true;
}

void ZK_SeedUuids(unsigned long long seed) { Generator().seed(seed); }

ZK_wString ZK_UuidToString(const ZK_UUID& uuid) {
  unsigned char b[16];
  ToBytes(uuid, b);
  char text[40];
  std::snprintf(text, sizeof text,
                "%02X%02X%02X%02X-%02X%02X-%02X%02X-%02X%02X-%02X%02X%02X%02X%02X%02X", b[0], b[1],
                b[2], b[3], b[4], b[5], b[6], b[7], b[8], b[9], b[10], b[11], b[12], b[13], b[14],
                b[15]);
  return ZK_wString::FromUtf8(text);
}

ZK_UUID ZK_UuidFromString(const wchar_t* text) {
  if (text == nullptr) return ZK_nil_uuid;
  const wchar_t* p = text;
  while (IsBlank(*p)) ++p;
  const bool braced = *p == L'{';
  if (braced) ++p;
  unsigned char bytes[16];
  int count = 0;
  for (int position = 0; position < 36; ++position, ++p) {
    if (position == 8 || position == 13 || position == 18 || position == 23) {
      if (*p != L'-') return ZK_nil_uuid;
      continue;
    }
    const int digit = HexValue(*p);
    if (digit < 0) return ZK_nil_uuid;
    if (count % 2 == 0)
      bytes[count / 2] = static_cast<unsigned char>(digit << 4);
    else
      bytes[count / 2] = static_cast<unsigned char>(bytes[count / 2] | digit);
    ++count;
  }
  if (braced && *p++ != L'}') return ZK_nil_uuid;
  while (IsBlank(*p)) ++p;
  return *p == 0 ? FromBytes(bytes) : ZK_nil_uuid;
}

ZK_UUID ZK_UuidFromString(const char* text) {
  if (text == nullptr) return ZK_nil_uuid;
  return ZK_UuidFromString(ZK_wString::FromUtf8(text).Array());
}

ZK_TestFailCreateUuid::ZK_TestFailCreateUuid() : m_previous(g_fail_create_uuid) {
  g_fail_create_uuid = true;
}

ZK_TestFailCreateUuid::~ZK_TestFailCreateUuid() { g_fail_create_uuid = m_previous; }
