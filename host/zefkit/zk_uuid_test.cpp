#include "host/zefkit/zk_uuid.h"

#include <gtest/gtest.h>

#include "host/zefkit/standin/zk_testing.h"

namespace {

const ZK_UUID kUuid = ZK_UuidFromString("0A1B2C3D-4E5F-6789-ABCD-EF0123456789");

TEST(ZkUuidFromString, AcceptsEitherCaseBracesAndSurroundingBlanksAndGivesNilForAnythingElse) {
  EXPECT_EQ(
      kUuid,
      (ZK_UUID{0x0A1B2C3D, 0x4E5F, 0x6789, {0xAB, 0xCD, 0xEF, 0x01, 0x23, 0x45, 0x67, 0x89}}));
  for (const char* text :
       {"0a1b2c3d-4e5f-6789-abcd-ef0123456789", " \t{0a1B2c3D-4e5F-6789-aBcD-eF0123456789}\r\n"}) {
    EXPECT_EQ(ZK_UuidFromString(text), kUuid) << text;
  }
  EXPECT_EQ(ZK_UuidToString(kUuid), L"0A1B2C3D-4E5F-6789-ABCD-EF0123456789");
  for (const char* text :
       {"", "0A1B2C3D-4E5F-6789-ABCD-EF012345678", "0A1B2C3D-4E5F-6789-ABCD-EF01234567890",
        "0A1B2C3D-4E5F-6789-ABCD-EF012345678G", "0A1B2C3D4E5F-6789-ABCD-EF0123456789-",
        "0A1B2C3D-4E5F-6789-ABCD-EF0123456789 x", "{0A1B2C3D-4E5F-6789-ABCD-EF0123456789",
        "0A1B2C3D-4E5F-6789-ABCD-EF0123456789}"}) {
    EXPECT_TRUE(ZK_UuidIsNil(ZK_UuidFromString(text))) << '"' << text << '"';
  }
  EXPECT_TRUE(ZK_UuidIsNil(ZK_UuidFromString(static_cast<const char*>(nullptr))));
  EXPECT_TRUE(ZK_UuidIsNil(ZK_UuidFromString(static_cast<const wchar_t*>(nullptr))));
}

TEST(ZkCreateUuid, MakesDistinctVersionFourUuidsFailsUnderTheSeamAndCompareSeesEveryByte) {
  ZK_UUID a = kUuid, b;
  {
    ZK_TestFailCreateUuid fail;
    EXPECT_FALSE(ZK_CreateUuid(a));
    EXPECT_EQ(a, kUuid);
  }
  ASSERT_TRUE(ZK_CreateUuid(a) && ZK_CreateUuid(b));  // the seam is gone with its scope
  EXPECT_NE(a, b);
  for (const ZK_UUID& uuid : {a, b}) {
    EXPECT_EQ(uuid.Data3 >> 12, 4) << ZK_UuidToString(uuid).ToUtf8();
    EXPECT_EQ(uuid.Data4[0] & 0xC0, 0x80) << ZK_UuidToString(uuid).ToUtf8();
  }

  for (int byte = 0; byte < 16; ++byte) {
    ZK_UUID changed = kUuid;
    reinterpret_cast<unsigned char*>(&changed)[byte] ^= 0x10;
    EXPECT_NE(ZK_UuidCompare(kUuid, changed), 0) << "byte " << byte;
    EXPECT_EQ(ZK_UuidCompare(kUuid, changed), -ZK_UuidCompare(changed, kUuid)) << "byte " << byte;
  }
}

}  // namespace
