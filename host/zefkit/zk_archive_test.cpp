#include "host/zefkit/zk_archive.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "host/zefkit/zk_light.h"

namespace {

const ZK_UUID kMemoId = ZK_UuidFromString("68710E7F-6F9B-4187-9AF0-CFC2C4806C0F");
const ZK_UUID kUnknownId = ZK_UuidFromString("0F1E2D3C-4B5A-4978-8695-A4B3C2D1E0F9");
const ZK_UUID kUnreadableId = ZK_UuidFromString("5B5C936D-BACA-4D3A-BDDC-300D4A3CE668");
const ZK_UUID kScratchId = ZK_UuidFromString("94C2A7E1-3B5D-4F60-8172-A3B4C5D6E7F8");
const wchar_t* const kMemoText = L"\u00C9t\u00E9 \U0001F600";

ZK_Object* CreateMemo();
ZK_Object* CreateBrokenMemo();
const ZK_ClassId g_memo_class("ArchiveTestMemo", "ZK_UserData", CreateMemo,
                              "0E6F3C1A-2B7D-4C59-9A1E-7D3B5F2C8A41");
const ZK_ClassId g_broken_class("ArchiveTestBroken", "ZK_UserData", CreateBrokenMemo,
                                "C3A9E2D4-5F61-4B8A-8E7C-1D2F3A4B5C6D");

// Archived user data carrying a text. Memos of the broken class write but never read; a memo may
// ask not to be written, or to be deleted once written.
class Memo : public ZK_UserData {
 public:
  enum Keeping { written, not_written, deleted_once_written };
  explicit Memo(const ZK_ClassId* class_id = &g_memo_class, const ZK_UUID& id = kMemoId,
                Keeping keeping = written)
      : class_id_(class_id), keeping_(keeping) {
    m_userdata_uuid = id;
  }
  const ZK_ClassId* ClassId() const override { return class_id_; }
  ZK_Object* __DeepCopy() const override { return new Memo(*this); }
  bool Archive() const override { return true; }
  bool Write(ZK_BinaryArchive& archive) const override { return archive.WriteString(text); }
  bool Read(ZK_BinaryArchive& archive) override {
    return class_id_ != &g_broken_class && archive.ReadString(text);
  }
  bool WriteToArchive(const ZK_BinaryArchive&, const ZK_Object*) const override {
    return keeping_ != not_written;
  }
  bool DeleteAfterWrite(const ZK_BinaryArchive&, const ZK_Object*) const override {
    return keeping_ == deleted_once_written;
  }

  ZK_wString text = kMemoText;

 private:
  const ZK_ClassId* class_id_;
  Keeping keeping_;
};

ZK_Object* CreateMemo() { return new Memo(); }
ZK_Object* CreateBrokenMemo() { return new Memo(&g_broken_class); }

class ZkArchive : public testing::Test {
 protected:
  ZkArchive() {
    light_.m_location = {1.5, -2, 3};
    light_.m_intensity = 0.25;
    light_.AttachUserData(new Memo());
  }

  // Reads one object, expecting `result`; the caller owns what was read.
  static std::unique_ptr<ZK_Object> ReadObject(ZK_BinaryArchive& in, int result = 1) {
    ZK_Object* object = nullptr;
    EXPECT_EQ(in.ReadObject(object), result);
    return std::unique_ptr<ZK_Object>(object);
  }
  // Checks that `object` is a copy of light_ with its memo.
  void ExpectLight(const ZK_Object* object) {
    const ZK_Light* light = ZK_Light::Cast(object);
    ASSERT_NE(light, nullptr);
    EXPECT_EQ(light->m_location.y, -2);
    EXPECT_EQ(light->m_intensity, 0.25);
    const auto* memo = static_cast<const Memo*>(light->GetUserData(kMemoId));
    ASSERT_NE(memo, nullptr);
    EXPECT_EQ(memo->text, kMemoText);
  }

  ZK_BinaryMemoryArchive out_;
  ZK_Light light_;
};

// User data that the reader cannot re-create, because its class is unknown there or its Read
// fails, stays with its object and is copied and written back byte for byte.
TEST_F(ZkArchive, SkipsUnknownObjectsAndKeepsUnreadableUserDataAsItWasRead) {
  {
    ZK_ClassId scoped("ArchiveTestScoped", "ZK_UserData", CreateMemo,
                      "A1B2C3D4-1111-4222-8333-444455556666");
    ASSERT_TRUE(out_.WriteObject(Memo(&scoped)));
    for (Memo* memo : {new Memo(&scoped, kUnknownId), new Memo(&g_broken_class, kUnreadableId)}) {
      memo->m_userdata_copycount = 1;
      light_.AttachUserData(memo);
    }
    ASSERT_TRUE(out_.WriteObject(light_));
  }
  ZK_BinaryMemoryArchive in(out_.Bytes());
  EXPECT_EQ(ReadObject(in, 2), nullptr);
  const size_t light_at = out_.Bytes().size() - in.BytesLeft();
  std::unique_ptr<ZK_Object> object = ReadObject(in);
  ExpectLight(object.get());
  ZK_BinaryMemoryArchive again;
  ASSERT_TRUE(again.WriteObject(*object));
  EXPECT_EQ(again.Bytes(),
            std::vector<unsigned char>(out_.Bytes().begin() + light_at, out_.Bytes().end()));
  const ZK_Light copy(*ZK_Light::Cast(object.get()));
  EXPECT_NE(copy.GetUserData(kUnknownId), nullptr);
  EXPECT_NE(copy.GetUserData(kUnreadableId), nullptr);
}

TEST_F(ZkArchive, UserDataDecidesWhetherItIsWrittenAndKept) {
  light_.AttachUserData(new Memo(&g_memo_class, kScratchId, Memo::not_written));
  ASSERT_TRUE(out_.WriteObject(light_));
  EXPECT_NE(light_.GetUserData(kScratchId), nullptr);
  delete light_.GetUserData(kScratchId);
  light_.AttachUserData(new Memo(&g_memo_class, kScratchId, Memo::deleted_once_written));
  ASSERT_TRUE(out_.WriteObject(light_));
  EXPECT_EQ(light_.GetUserData(kScratchId), nullptr);

  ZK_BinaryMemoryArchive in(out_.Bytes());
  std::unique_ptr<ZK_Object> first = ReadObject(in);
  std::unique_ptr<ZK_Object> second = ReadObject(in);
  EXPECT_EQ(first->GetUserData(kScratchId), nullptr);
  EXPECT_NE(second->GetUserData(kScratchId), nullptr);  // read back as a memo
}

// Strings travel as a unit count and little-endian UTF-16 units. A huge length must fail
// without allocating, for strings and chunks alike; numbers must be finite.
TEST_F(ZkArchive, MalformedInputFailsAndLeavesTheOutputAndThePosition) {
  using Bytes = std::vector<unsigned char>;
  const Bytes huge{0x00, 0x94, 0x35, 0x77, 'A', 'A', 'A', 'A'};            // 2000000000 units
  for (const Bytes& bytes : {huge, Bytes{0xFF, 0xFF, 0xFF, 0xFF, 'a', 0},  // negative length
                             Bytes{2, 0, 0, 0, 'a', 0, 0x00, 0xD8},        // lone high surrogate
                             Bytes{2, 0, 0, 0, 0x00, 0xDC, 'a', 0},        // lone low surrogate
                             Bytes{2, 0, 0, 0, 0x00, 0xD8, 'a', 0},        // high, then no low
                             Bytes{3, 0, 0, 0, 'a', 0, 0, 0, 'b', 0}}) {   // NUL
    ZK_BinaryMemoryArchive in(bytes);
    ZK_wString text(L"kept");
    EXPECT_FALSE(in.ReadString(text));
    EXPECT_EQ(text, L"kept");
    EXPECT_EQ(in.BytesLeft(), bytes.size());
  }
  ZK_BinaryMemoryArchive chunk(huge);
  EXPECT_FALSE(chunk.BeginReadChunk());
  EXPECT_EQ(chunk.BytesLeft(), huge.size());

  ZK_Xform xform = ZK_Xform::Scale(2, 2, 2);
  xform(0, 2) = std::numeric_limits<double>::quiet_NaN();
  ASSERT_TRUE(out_.WriteXform(xform));
  ZK_BinaryMemoryArchive numbers(out_.Bytes());
  ZK_Xform read;
  EXPECT_FALSE(numbers.ReadXform(read));
  EXPECT_TRUE(read.IsIdentity());
  double value = 0;
  EXPECT_TRUE(numbers.ReadDouble(value));
  EXPECT_EQ(value, 2.0);
  ZK_3dPoint point;
  EXPECT_FALSE(numbers.ReadPoint(point));  // its y is the NaN
}

TEST_F(ZkArchive, ReadsAWholeObjectFailsCleanlyOnEveryCutAndRefusesWritesPastTheLimitOrInReading) {
  ASSERT_TRUE(out_.WriteObject(light_));
  const std::vector<unsigned char>& whole = out_.Bytes();
  for (size_t cut = 0; cut <= whole.size(); ++cut) {
    ZK_BinaryMemoryArchive in(std::vector<unsigned char>(whole.begin(), whole.begin() + cut));
    ZK_Object* object = nullptr;
    const int result = in.ReadObject(object);
    std::unique_ptr<ZK_Object> owned(object);
    if (result == 1) ExpectLight(object);
    EXPECT_EQ(object != nullptr, result == 1) << "cut at " << cut;
    EXPECT_EQ(result == 1, cut == whole.size()) << "cut at " << cut;
  }

  ZK_BinaryMemoryArchive limited(10);
  EXPECT_TRUE(limited.WriteInt(1) && limited.WriteInt(2));
  EXPECT_FALSE(limited.WriteString(L"a"));
  EXPECT_EQ(limited.Bytes().size(), 8u);

  ZK_BinaryMemoryArchive in(whole);
  EXPECT_FALSE(in.WriteInt(1));
  EXPECT_EQ(in.Bytes(), whole);
}

// Values and an object, then megabytes of chunks: the chunks go to the file as they are ended, with
// their checks, and none is lost at the seams. A file that cannot be made fails the chunk that
// would have gone into it first, and its closing.
TEST_F(ZkArchive, RoundTripsValuesAnObjectAndALargeFileOfChunksWrittenOnTheWay) {
  std::string folder = testing::TempDir() + "zk_archive_test_XXXXXX";
  ASSERT_NE(mkdtemp(folder.data()), nullptr);
  const std::string path = folder + "/light.bin";
  const ZK_Xform xform = ZK_Xform::Rotation(0.3, {1, 1, 0}, {2, 3, 4}) * ZK_Xform::Scale(1, 2, 3);
  const std::vector<unsigned char> kilobyte(1000, 0x5A);
  std::vector<unsigned int> written_crcs;
  {
    ZK_BinaryFileArchive out(path, ZK_ArchiveMode::write);
    ASSERT_TRUE(out.WriteInt(INT_MIN) && out.WriteUuid(kMemoId) && out.WriteString(kMemoText));
    ASSERT_TRUE(out.WriteString(L"") && out.WriteXform(xform) && out.WriteDouble(-0.1));
    ASSERT_TRUE(out.WriteObject(light_));
    for (int i = 0; i < 3000; ++i) {
      unsigned int crc = 0;
      ASSERT_TRUE(out.BeginWriteChunk() && out.WriteInt(i));
      ASSERT_TRUE(out.WriteDoubles(reinterpret_cast<const double*>(kilobyte.data()), 125));
      ASSERT_TRUE(out.EndWriteChunk(crc));
      written_crcs.push_back(crc);
    }
    EXPECT_TRUE(out.Close());
  }
  ZK_BinaryFileArchive in(path, ZK_ArchiveMode::read);
  int number = 0;
  ZK_UUID uuid;
  ZK_wString text, empty(L"not yet");
  ZK_Xform xform_read(0.0);
  double d = 0;
  ASSERT_TRUE(in.ReadInt(number) && in.ReadUuid(uuid) && in.ReadString(text));
  ASSERT_TRUE(in.ReadString(empty) && in.ReadXform(xform_read) && in.ReadDouble(d));
  EXPECT_EQ(std::tie(number, uuid, text, empty, xform_read, d),
            std::make_tuple(INT_MIN, kMemoId, ZK_wString(kMemoText), ZK_wString(), xform, -0.1));
  ExpectLight(ReadObject(in).get());
  for (int i = 0; i < 3000; ++i) {
    unsigned int crc = 0;
    int index = -1;
    ASSERT_TRUE(in.BeginReadChunk(crc) && in.ReadInt(index) && in.EndReadChunk()) << i;
    EXPECT_EQ(index, i);
    EXPECT_EQ(crc, written_crcs[static_cast<size_t>(i)]);
  }
  EXPECT_EQ(in.BytesLeft(), 0u);
  std::remove(path.c_str());
  std::remove(folder.c_str());

  EXPECT_FALSE(ZK_BinaryFileArchive(path, ZK_ArchiveMode::read).IsOpen());
  EXPECT_FALSE(ZK_BinaryFileArchive(path, ZK_ArchiveMode::write).Close());  // no folder now
  ZK_BinaryFileArchive nowhere(path, ZK_ArchiveMode::write);
  bool ended = true;
  for (int i = 0; i < 3000 && ended; ++i) {
    ended = nowhere.BeginWriteChunk() && nowhere.WriteChunk(kilobyte) && nowhere.EndWriteChunk();
  }
  EXPECT_FALSE(ended);
  EXPECT_FALSE(nowhere.Close());
}

}  // namespace
