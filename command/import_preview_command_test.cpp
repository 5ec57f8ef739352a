// StanceImportPreview against the import itself: what the preview says a file's stances will be
// called is what the merge then calls them.

#include "command/import_preview_command.h"

#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdio>
#include <string>

#include "testing/command_line_test.h"

namespace {

using Texts = std::vector<std::wstring>;

class ImportPreviewTest : public CommandLineTest {
 protected:
  // A model file whose stances are each carried by one object of their own.
  void WriteFile(const Texts& stances) {
    CTarsaDoc* source = CTarsaStandIn::NewDocument();
    for (const std::wstring& name : stances) {
      auto* object = new CTarsaObject(new ZK_Point({1, 2, 3}));
      ASSERT_TRUE(source->AddObject(object));
      ZK_SimpleArray<const CTarsaObject*> objects;
      objects.Append(object);
      access_.SaveStance(*source, name.c_str(), objects);
    }
    path_ = ModelPath();
    SaveModel(path_, source);
    ASSERT_TRUE(CTarsaStandIn::CloseDocument(source->RuntimeSerialNumber()));
    ASSERT_TRUE(CTarsaStandIn::SetActiveDocument(serial_));
  }
  Texts Preview(const std::string& path) {
    Texts shown = Run(L"StanceImportPreview", {ZK_wString::FromUtf8(path).Text()});
    shown.erase(shown.begin());  // the prompt with its answer
    return shown;
  }

  std::string path_;
};

TEST_F(ImportPreviewTest, ThePreviewNamesEveryStanceAsTheMergeThenDoes) {
  const struct {
    const char* what;
    Texts here, in_file;
  } cases[] = {
      {"names free", {L"Open"}, {L"Closed", L"Side"}},
      {"a name taken", {L"Pose"}, {L"Pose"}},
      {"a name taken twice", {L"Pose", L"Pose - Copy"}, {L"Pose"}},
      {"taken in another letter case", {L"pose", L"POSE - COPY"}, {L"Pose", L"pose - copy"}},
      {"the copy's name already taken", {L"A - Copy", L"A"}, {L"A - Copy", L"A"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    for (const std::wstring& name : c.here) Save(name.c_str(), {AddNamed(L"here")});
    WriteFile(c.in_file);
    const Texts before = Names();
    const int steps = CTarsaStandIn::UndoStepCount(*doc_);
    const Texts shown = Preview(path_);
    EXPECT_EQ(Names(), before) << "the preview changes nothing";
    EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), steps);
    std::wstring error;
    ASSERT_TRUE(TsReadModelFile(*doc_, path_, true, false, error));
    const Texts after = Names();
    ASSERT_EQ(shown.size(), c.in_file.size());
    for (size_t i = 0; i < shown.size(); ++i) {
      EXPECT_EQ(shown[i], c.in_file[i] + L": arrives as " + after[before.size() + i] +
                              L", carried by 1 objects");
    }
    Table().RemoveAll();
  }
}

TEST_F(ImportPreviewTest, AFileThatCannotBeReadGetsTheImportsMessageAndNothingChanges) {
  WriteFile({});
  const std::string without_stances = path_;
  const std::string folder = testing::TempDir() + "import_preview_folder";
  const std::string damaged = testing::TempDir() + "import_preview_damaged.tsm";
  std::FILE* file = std::fopen(damaged.c_str(), "wb");
  ASSERT_NE(file, nullptr);
  std::fputs("not a model", file);
  std::fclose(file);
  ASSERT_EQ(mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST, true);
  const auto wide = [](const std::string& path) { return ZK_wString::FromUtf8(path).Text(); };
  const struct {
    std::string path;
    std::wstring shown;
    CTarsaCommand::result result;
  } cases[] = {
      {folder, wide(folder) + L" is a folder, not a model file.", CTarsaCommand::failure},
      {damaged, wide(damaged) + L" is not a Tarsa model file.", CTarsaCommand::failure},
      {folder + "/missing.tsm", L"Cannot read " + wide(folder) + L"/missing.tsm.",
       CTarsaCommand::failure},
      {without_stances, L"The file has no stances.", CTarsaCommand::success},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Preview(c.path), Texts{c.shown});
    EXPECT_EQ(result_, c.result);
  }
  EXPECT_EQ(Table().Count(), 0);
  std::remove(damaged.c_str());
  rmdir(folder.c_str());
}

}  // namespace
