#include "shell/session.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include <stdlib.h>

#include "host/zefkit/standin/zk_point_geometry.h"
#include "shell/script_front_end.h"
#include "testing/host_session_test.h"

namespace {

// The program's model, saved to a file that another program then saves over.
class SessionTest : public HostSessionTest {
 protected:
  void SetUp() override {
    folder_ = testing::TempDir() + "session_test_XXXXXX";
    ASSERT_NE(mkdtemp(folder_.data()), nullptr);
    path_ = folder_ + "/model.tsm";
    std::wstring error;
    ASSERT_TRUE(TarsaSession().Start("", error));
    ASSERT_TRUE(TarsaSession().Document()->AddObject(
        new CTarsaObject(new ZK_Box({0, 0, 0}, {1, 1, 1}), {})));
    ASSERT_TRUE(TarsaSession().Save(path_, error));
  }
  void TearDown() override {
    TarsaSession().UnRegister();
    std::error_code ec;
    std::filesystem::remove_all(folder_, ec);
    HostSessionTest::TearDown();
  }
  // Another program saves the model: a file of its own renamed over it.
  void SaveBehindItsBack() {
    std::filesystem::copy_file(path_, path_ + ".other");
    std::filesystem::rename(path_ + ".other", path_);
  }
  CTarsaCommand::result Save() { return CTarsaStandIn::CommandLine().RunCommand(L"Save"); }
  std::wstring Shown() { return CTarsaStandIn::CommandLine().TakeOutput(); }
  std::wstring Name() const { return ZK_wString::FromUtf8(path_).Text(); }

  std::string folder_, path_;
};

TEST_F(SessionTest, ASaveOverAModelChangedOnDiskAsksAndAScriptIsRefused) {
  SaveBehindItsBack();
  const std::wstring changed = Name() + L" changed on disk since it was opened or last saved here";
  CTarsaStandIn::Answers().Answer(false);
  EXPECT_EQ(Save(), CTarsaCommand::cancel);
  EXPECT_EQ(Shown(), L"Not saved; " + Name() + L" is as it was.\n");
  const auto asked = CTarsaStandIn::Answers().TakeQuestions();
  ASSERT_EQ(asked.size(), 1u);
  EXPECT_EQ(asked[0].prompt, changed + L". Replace it with this model?");

  {
    std::istringstream script;
    TsScriptFrontEnd front_end(script, [](const std::wstring&) {});
    const TsFrontEndScope installed(front_end);
    EXPECT_EQ(Save(), CTarsaCommand::failure);
  }
  EXPECT_EQ(Shown(), changed +
                         L"; it is not overwritten. Save the model under another name with "
                         L"SaveAs.\n");

  CTarsaStandIn::Answers().Answer(true);
  EXPECT_EQ(Save(), CTarsaCommand::success);
  EXPECT_EQ(CTarsaStandIn::Answers().TakeQuestions().size(), 1u);
  EXPECT_EQ(Save(), CTarsaCommand::success);  // its own save is no change
  EXPECT_EQ(CTarsaStandIn::Answers().TakeQuestions().size(), 0u);
  EXPECT_EQ(Shown(), L"Saved " + Name() + L".\nSaved " + Name() + L".\n");
}

}  // namespace
