#include "shell/program.h"

#include <gtest/gtest.h>

#include <sstream>

#include "host/tarsa/standin/tarsa_model_file.h"
#include "shell/script_front_end.h"
#include "shell/session.h"
#include "testing/model_file_blocks.h"
#include "testing/stance_document_test.h"

namespace {

class ProgramTest : public StanceDocumentTest {
 protected:
  void TearDown() override {
    TarsaSession().UnRegister();
    std::remove(path_.c_str());
    StanceDocumentTest::TearDown();
  }
  // The program run on `model` with a script of `lines`: what it showed.
  std::wstring Run(const std::string& model, const std::string& lines) {
    std::istringstream script(lines);
    std::wstring shown;
    TsScriptFrontEnd front_end(script, [&shown](const std::wstring& text) { shown += text; });
    std::wstring error;
    EXPECT_TRUE(TsRunProgram(front_end, model, nullptr, error)) << ZK_wString(error).ToUtf8();
    CTarsaStandIn::CommandLine().TakeOutput();
    return shown;
  }

  std::string path_ = testing::TempDir() + "program_test.tsm";
};

// A model named on the program's command line shows what opening it printed, as Open does: here
// the plug-in's message about stances of a newer version, which a save would otherwise replace
// without the user ever having been told.
TEST_F(ProgramTest, AModelGivenAtStartShowsWhatOpeningItPrinted) {
  Save(L"Front", {AddNamed(L"lid")});
  std::wstring error;
  ASSERT_TRUE(TsWriteModelFile(*doc_, path_, error));
  ModelFileBlocks newer;
  ASSERT_TRUE(newer.Read(path_));
  for (auto& object : newer.objects) ModelFileBlocks::MakeStancesNewer(object);
  ModelFileBlocks::MakeStancesNewer(newer.plug_ins.at(0).bytes);
  newer.Write(path_);

  const std::wstring shown = Run(path_, "-Stance List _Enter\n");
  const std::wstring file = ZK_wString::FromUtf8(path_).Text();
  EXPECT_EQ(shown.substr(0, shown.find(L"Command:")),
            L"Stance: This model was created with a more recent version of the Stance plug-in\n"
            L"The Stance plug-in could not read its data in " +
                file + L"; the data is kept as it is and saved with the model.\nOpened " + file +
                L".\n");
  EXPECT_EQ(CTarsaStandIn::TakeMessageBoxes().size(), 1u);
}

}  // namespace
