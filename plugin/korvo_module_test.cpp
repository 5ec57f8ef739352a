// The module Korvo.tsp as the host loads it. This test links none of the plug-in's code: the
// plug-in object exists only in the module file, once each time it is loaded.
#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "host/platform/automation.h"
#include "host/tarsa/tarsa_command.h"
#include "host/tarsa/tarsa_plugin.h"
#include "host/tarsa/tarsa_stance_dynamic_access.h"
#include "testing/host_session_test.h"
#include "testing/script_values.h"
#include "testing/stand_ins.h"

namespace {

using KorvoModuleTest = HostSessionTest;

TEST_F(KorvoModuleTest, LoadsUsesAndUnloadsTwiceInOneProcess) {
  for (int round = 0; round < 2; ++round) {
    const size_t watchers = CTarsaStandIn::EventWatcherCount();
    std::wstring error;
    CTarsaPlugIn* plug_in = CTarsaPlugInLoader::Load(KORVO, error);
    ASSERT_NE(plug_in, nullptr) << ZK_wString(error).ToUtf8();
    EXPECT_STREQ(plug_in->PlugInName(), L"Stance");
    CTarsaStandIn::SetTranslation(19663, L"Stellung");
    EXPECT_STREQ(plug_in->LocalPlugInName(), L"Stellung");
    EXPECT_TRUE(
        std::regex_match(plug_in->PlugInVersion(),
                         std::wregex(L"[A-Z][a-z]{2} [ 123]\\d \\d{4}  \\d\\d:\\d\\d:\\d\\d")));
    EXPECT_EQ(plug_in->PlugInLoadTime(), 2);
    EXPECT_FALSE(plug_in->AddToPlugInHelpMenu());
    EXPECT_FALSE(plug_in->OnDisplayPlugInHelp(nullptr)) << "no help of its own, as the host's base";
    // The Stance command first, then the plug-in's further commands in their order.
    std::vector<CTarsaCommand*> commands;
    for (const wchar_t* name :
         {L"Stance", L"StanceCheck", L"StanceRestoreObjects", L"StanceImportPreview"}) {
      commands.push_back(CTarsaCommand::Find(name, true));
    }
    EXPECT_EQ(CTarsaPlugInLoader::Commands(*plug_in), commands);
    const CTarsaPlugInLoader::DeveloperInfo* developer = CTarsaPlugInLoader::Developer(*plug_in);
    ASSERT_NE(developer, nullptr);
    EXPECT_EQ(developer->m_update_url, developer->m_website);
    EXPECT_NE(developer->m_address.find(L"\r\n"), std::wstring::npos);
    ITsStanceDynamicAccess* access = CTarsaStandIn::StanceDynamicAccess();
    EXPECT_NE(access, nullptr);
    EXPECT_GT(CTarsaStandIn::EventWatcherCount(), watchers);
    EXPECT_NE(ZK_ClassId::ClassId("CKorvoUserData"), nullptr);

    const auto run = [](const wchar_t* macro) { CTarsaStandIn::CommandLine().RunScript(macro, 0); };
    const auto x = [] {  // where the one object of the active document is
      CTarsaObjectIterator it(*TarsaApp().ObsoleteActiveDoc());
      return ZK_PointGeometry::Cast(it.First()->Geometry())->Points()[0].x;
    };
    CTarsaStandIn::NewDocument();
    run(L"-_Point door 0,0,0");
    run(L"-_Stance _Save \"Closed\" door _Enter _Enter");
    run(L"-_Move door _Enter 5,0,0");
    EXPECT_EQ(x(), 5);
    run(L"-_Stance _Restore \"Closed\" _Enter");
    EXPECT_EQ(x(), 0);
    EXPECT_EQ(CTarsaStandIn::CommandLine().TakeOutput(), L"");
    // The script object, called late-bound as a script engine calls it.
    auto* dispatch = static_cast<IDispatch*>(plug_in->GetScriptObjectInterface(IID_IDispatch));
    ASSERT_NE(dispatch, nullptr);
    ScriptValues values;
    const VARIANT& count = values.Call(*dispatch, L"stancecount");
    EXPECT_EQ(count.vt == VT_I4 ? count.lVal : -1, 1);
    dispatch->Release();
    EXPECT_EQ(plug_in->GetScriptObjectInterface(IID_NULL), nullptr);

    // The unload withdraws what the host would call into the module, which then stays open;
    // closing the module destroys the plug-in object, which withdraws the rest.
    CTarsaStandIn::UnloadPlugIn(*plug_in);
    EXPECT_EQ(CTarsaStandIn::StanceDynamicAccess(), nullptr);
    EXPECT_EQ(CTarsaStandIn::EventWatcherCount(), watchers) << "the host would call unloaded code";
    Stance_SetTarsaDynamicAccess(access);  // as if the host still held it
    CTarsaStandIn::Reset();
    EXPECT_EQ(CTarsaCommand::Find(L"Stance", true), nullptr);
    EXPECT_EQ(CTarsaStandIn::StanceDynamicAccess(), nullptr);
    EXPECT_TRUE(CTarsaStandIn::PlugIns().empty());
    EXPECT_EQ(ZK_ClassId::ClassId("CKorvoUserData"), nullptr);
  }
}

}  // namespace
