// The loader refusing modules that are broken, each with a message that names the file and why.
#include "host/tarsa/standin/tarsa_plugin_loader.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "host/tarsa/tarsa_command.h"
#include "testing/host_session_test.h"

namespace {

class TarsaPlugInLoaderTest : public HostSessionTest {
 protected:
  // The message of a refused module, after checking that it left the host as it was.
  static std::wstring Refused(const char* path) {
    std::wstring error;
    EXPECT_EQ(CTarsaPlugInLoader::Load(path, error), nullptr);
    EXPECT_TRUE(CTarsaStandIn::PlugIns().empty());
    EXPECT_EQ(CTarsaCommand::Find(L"Stance", true), nullptr);
    return error;
  }
};

// A module whose load throws: the transcript refused_module.
TEST_F(TarsaPlugInLoaderTest,
       BrokenModulesAreRefusedWithTheirReasonAndABareNameIsInTheCurrentFolder) {
  const struct {
    const char* path;
    const wchar_t* shown;
    const wchar_t* reason;
  } cases[] = {
      {BROKEN_MISSING_EXPORT, BROKEN_MISSING_EXPORT_W,
       L"it has no export TarsaPlugInSdkServiceRelease."},
      {BROKEN_WRONG_SDK, BROKEN_WRONG_SDK_W,
       L"TarsaPlugInSdkServiceRelease gives 0x8C005B78; this host needs 0x8C005B79."},
      {BROKEN_REFUSED_LOAD, BROKEN_REFUSED_LOAD_W, L"its licence has run out."},
      {BROKEN_SILENT_REFUSAL, BROKEN_SILENT_REFUSAL_W, L"the plug-in refused to load."},
      {BROKEN_NAMELESS, BROKEN_NAMELESS_W, L"its plug-in gives no name."},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Refused(c.path), L"Could not load " + std::wstring(c.shown) + L": " + c.reason);
  }
  const std::wstring missing = Refused("/nonexistent/Korvo.tsp");
  EXPECT_EQ(missing.rfind(L"Could not load /nonexistent/Korvo.tsp: ", 0), 0u) << missing;
  const std::wstring directory = Refused("/tmp");
  EXPECT_EQ(directory.rfind(L"Could not load /tmp: ", 0), 0u) << directory;

  char here[4096];
  ASSERT_NE(getcwd(here, sizeof here), nullptr);
  const std::string module = KORVO;
  ASSERT_EQ(chdir(module.substr(0, module.rfind('/')).c_str()), 0);
  std::wstring error;
  const CTarsaPlugIn* plug_in = CTarsaPlugInLoader::Load("Korvo.tsp", error);
  EXPECT_EQ(chdir(here), 0);
  ASSERT_NE(plug_in, nullptr) << ZK_wString(error).ToUtf8();
  EXPECT_EQ(CTarsaPlugInLoader::Path(*plug_in), "Korvo.tsp");
}

}  // namespace
