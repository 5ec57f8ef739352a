// StanceImportPreview against the import itself: what the preview says a file's stances will be
// called is what the merge then calls them.

#include "command/import_preview_command.h"

#include <string>

#include "testing/command_line_test.h"
#include "testing/model_file_blocks.h"

namespace {

using Texts = std::vector<std::wstring>;

class ImportPreviewTest : public CommandLineTest {
 protected:
  // A model file whose stances are each carried by one object of their own; the stances are
  // then taken out of the document.
  void WriteFile(const Texts& stances) {
    for (const std::wstring& name : stances) Save(name.c_str(), {AddNamed(L"there")});
    path_ = ModelPath();
    SaveModel(path_);
    Table().RemoveAll();
  }
  Texts Preview(const std::string& path) {
    return Answered(L"StanceImportPreview", ZK_wString::FromUtf8(path).Text());
  }

  std::string path_;
};

TEST_F(ImportPreviewTest, ThePreviewNamesEveryStanceAsTheMergeThenDoesOrSaysWhyItCannot) {
  const struct {
    const char* what;
    Texts here, in_file;
  } cases[] = {
      {"names free", {L"Open"}, {L"Closed", L"Side"}},
      {"names taken in another letter case", {L"pose", L"POSE - COPY"}, {L"Pose", L"pose - copy"}},
      {"the copy's name already taken", {L"A - Copy", L"A"}, {L"A - Copy", L"A"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    WriteFile(c.in_file);
    for (const std::wstring& name : c.here) Save(name.c_str(), {AddNamed(L"here")});
    const Texts before = Names();
    const int steps = CTarsaStandIn::UndoStepCount(*doc_);
    const Texts shown = Preview(path_);
    EXPECT_EQ(Names(), before) << "the preview changes nothing";
    EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps);
    ASSERT_TRUE(ReadModel(path_));
    Texts merged;
    for (size_t i = 0; i < c.in_file.size(); ++i) {
      merged.push_back(c.in_file[i] + L": arrives as " + Names().at(before.size() + i) +
                       L", carried by 1 objects");
    }
    EXPECT_EQ(shown, merged);
    Table().RemoveAll();
  }

  // Each reason a file's stances cannot be previewed gets its own message, and the document's
  // stances stay as they were.
  WriteFile({});
  EXPECT_EQ(Preview(path_), Texts{L"The file has no stances."});
  WriteFile({L"Pose"});
  ModelFileBlocks file;
  ASSERT_TRUE(file.Read(path_));
  using Change = void (*)(ModelFileBlocks&);
  const struct {
    Change change;  // of the file's stance block, or of the file
    std::wstring shown;
  } broken[] = {
      {[](ModelFileBlocks& m) { m.plug_ins.clear(); }, L"The file has no stances."},
      {[](ModelFileBlocks& m) { ModelFileBlocks::MakeStancesNewer(m.plug_ins.at(0).bytes); },
       L"This model was created with a more recent version of the Stance plug-in"},
      {[](ModelFileBlocks& m) { m.plug_ins.at(0).bytes.resize(4); },
       L"The stances of the file cannot be read."},
      {[](ModelFileBlocks& m) { m.plug_ins.at(0).bytes.pop_back(); },
       L"The stances of the file cannot be read."},
  };
  for (const auto& c : broken) {
    ModelFileBlocks changed = file;
    c.change(changed);
    changed.Write(path_);
    EXPECT_EQ(Preview(path_), Texts{c.shown});
    EXPECT_EQ(result_, CTarsaCommand::success);
  }
  EXPECT_EQ(Preview(path_ + ".missing"),
            Texts{L"Cannot read " + ZK_wString::FromUtf8(path_).Text() + L".missing."});
  EXPECT_EQ(result_, CTarsaCommand::failure);
  EXPECT_EQ(Table().Count(), 0);
}

}  // namespace
