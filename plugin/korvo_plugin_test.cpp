#include "plugin/korvo_plugin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "events/event_watcher.h"
#include "testing/command_line_test.h"
#include "testing/model_file_blocks.h"
#include "testing/stand_ins.h"

namespace {

const wchar_t kNewerText[] =
    L"This model was created with a more recent version of the Stance plug-in";

class KorvoPlugInTest : public CommandLineTest {
 protected:
  ModelFileBlocks::Bytes WriteBlock() {
    ZK_BinaryMemoryArchive out;
    EXPECT_TRUE(KorvoPlugIn().WriteDocument(*doc_, out, Options()));
    return out.Bytes();
  }
  // Reads a block into the document as if no file were being opened.
  bool ReadBlock(const ModelFileBlocks::Bytes& bytes) {
    ZK_BinaryMemoryArchive in(bytes);
    return KorvoPlugIn().ReadDocument(*doc_, in, CTarsaFileReadOptions(L"", false, false));
  }
  CTarsaFileWriteOptions Options() const { return CTarsaFileWriteOptions(serial_, L""); }
  // What a read showed: the message box of a newer block, shown on the command line too, when
  // `newer`; then `also`.
  void ExpectShown(bool newer, const std::wstring& also = L"") {
    const auto shown = CTarsaStandIn::TakeMessageBoxes();
    ASSERT_EQ(shown.size(), newer ? 1u : 0u);
    if (newer) {
      EXPECT_EQ(std::tie(shown[0].m_text, shown[0].m_caption, shown[0].m_flags),
                std::make_tuple(std::wstring(kNewerText), std::wstring(L"Stance"), 0x40u));
    }
    EXPECT_EQ(CommandLine().TakeOutput(),
              (newer ? L"Stance: " + std::wstring(kNewerText) + L"\n" : L"") + also);
  }
  // `bytes` with the int at `at` replaced by `value`.
  static ModelFileBlocks::Bytes WithInt(ModelFileBlocks::Bytes bytes, size_t at, int value) {
    ZK_BinaryMemoryArchive out;
    out.WriteInt(value);
    std::copy(out.Bytes().begin(), out.Bytes().end(), bytes.begin() + static_cast<long>(at));
    return bytes;
  }

  const std::string path_ = ModelPath();
  const std::string again_ = ModelPath("again");
};

// A stance block that passes its checksum yet cannot be read, or was written by a newer version
// of the plug-in, is not read as an empty table, and the end of the open cleans nothing away: the
// block, and the placement records a newer version wrote, are kept and saved back unchanged until
// the stances change, and the first change says once that the block will be replaced.
TEST_F(KorvoPlugInTest, TheBlockReadsBackAndAnUnreadableOrNewerOneIsKeptUntilTheStancesChange) {
  EXPECT_FALSE(KorvoPlugIn().ShouldWriteDocument(Options()));
  const size_t count_at = WriteBlock().size() - 4;  // a block of no stances ends with its count
  const ZK_UUID box = AddBox();
  const ZK_UUID front = Save(L"Front", {box, AddLight()});
  EXPECT_TRUE(KorvoPlugIn().ShouldWriteDocument(Options()));  // one stance is enough
  const ZK_UUID side = Save(L"Side", {});
  SaveModel(path_);
  ModelFileBlocks good;
  ASSERT_TRUE(good.Read(path_));
  const ModelFileBlocks::Bytes block = good.plug_ins.at(0).bytes;
  ZK_BinaryMemoryArchive expected;
  ASSERT_TRUE(expected.WriteInt(0) && expected.WriteString(L"Place Holder") &&
              expected.WriteString(L"Place Holder") && expected.WriteInt(2) &&
              expected.WriteUuid(front) && expected.WriteString(L"Front") &&
              expected.WriteUuid(side) && expected.WriteString(L"Side"));
  EXPECT_EQ(block, expected.Bytes());

  // Read while no file is being opened: the table is replaced, and the clean-up is asked for.
  Table().RemoveAll();
  Save(L"Other", {});
  ASSERT_TRUE(ReadBlock(WithInt(block, 0, -1)));  // an older version
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Front", L"Side"}));
  EXPECT_TRUE(KorvoPlugIn().EventWatcher()->m_cleanup_requested);
  // A newer block is refused with one message, and the table is kept.
  ASSERT_TRUE(Table().RemoveByName(L"Side"));
  EXPECT_EQ(TextsAsked([&] { EXPECT_FALSE(ReadBlock(WithInt(block, 0, 1))); }),
            (TextsById{{15750, {kNewerText}}, {15751, {L"Stance"}}}));
  ExpectShown(true);
  EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Front"}));

  const std::wstring shown_path = ZK_wString::FromUtf8(path_).Text();
  ModelFileBlocks::Bytes longer = block;
  longer.push_back(0);
  const struct {
    const char* what;
    ModelFileBlocks::Bytes bytes;
    bool newer_records;
  } cases[] = {
      {"a negative count", WithInt(block, count_at, -1), false},
      {"a name longer than the block", WithInt(block, count_at + 4 + 16, 1000), false},
      {"bytes after the last stance", longer, false},
      {"a newer version", WithInt(block, 0, 1), false},
      {"a newer version, its records newer too", WithInt(block, 0, 1), true},
      {"an end inside the place holder", ModelFileBlocks::Bytes(block.begin(), block.begin() + 6),
       false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    ModelFileBlocks file = good;
    file.plug_ins[0].bytes = c.bytes;
    for (auto& object : file.objects) {
      if (c.newer_records) ModelFileBlocks::MakeStancesNewer(object);
    }
    file.Write(path_);
    std::wstring error;
    CTarsaDoc* opened = CTarsaStandIn::OpenDocument(path_, error);
    ASSERT_NE(opened, nullptr) << ZK_wString(error).ToUtf8();
    ExpectShown(c.bytes[0] == 1, L"The Stance plug-in could not read its data in " + shown_path +
                                     L"; the data is kept as it is and saved with the model.\n");
    doc_ = opened;
    serial_ = opened->RuntimeSerialNumber();
    EXPECT_EQ(Table().Count(), 0);
    EXPECT_EQ(RecordOf(box) && RecordOf(box)->HasEntry(front), !c.newer_records);
    SaveModel(again_);
    ModelFileBlocks saved;
    ASSERT_TRUE(saved.Read(again_));
    EXPECT_EQ(std::tie(saved.objects, saved.plug_ins), std::tie(file.objects, file.plug_ins));

    Save(L"Side", {box});
    EXPECT_EQ(CommandLine().TakeOutput(),
              L"The stances in " + shown_path +
                  L" that could not be read will be replaced by the present ones when the model "
                  L"is saved.\n");
    Save(L"Top", {box});
    EXPECT_EQ(CommandLine().TakeOutput(), L"");
  }
}

}  // namespace
