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

class KorvoModuleTest : public HostSessionTest {
 protected:
  CTarsaPlugIn* Load(const char* path = KORVO) {
    CTarsaPlugIn* plug_in = CTarsaPlugInLoader::Load(path, error_);
    EXPECT_EQ(error_, L"");
    return plug_in;
  }
  const CTarsaObject* AddBox(const wchar_t* name) {
    CTarsaObjectAttributes attributes;
    attributes.m_name = name;
    auto* object = new CTarsaObject(new ZK_Box({0, 0, 0}, {1, 1, 1}), attributes);
    EXPECT_TRUE(CTarsaStandIn::NewDocument()->AddObject(object));
    return object;
  }
  static double X(const wchar_t* name) {
    CTarsaObjectIterator it(*TarsaApp().ObsoleteActiveDoc());
    for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
      if (object->Attributes().m_name == name) {
        return ZK_PointGeometry::Cast(object->Geometry())->Points()[0].x;
      }
    }
    return -1;
  }
  static void Run(const wchar_t* macro) { CTarsaStandIn::CommandLine().RunScript(macro, 0); }
  // What the plug-in's script object answers to StanceCount, called late-bound as a script
  // engine calls it; the interface is released again.
  static long ScriptedStanceCount(CTarsaPlugIn& plug_in) {
    auto* dispatch = static_cast<IDispatch*>(plug_in.GetScriptObjectInterface(IID_IDispatch));
    if (dispatch == nullptr) return -1;
    ScriptValues values;
    const VARIANT& result = values.Call(*dispatch, L"stancecount");
    dispatch->Release();
    return result.vt == VT_I4 ? result.lVal : -1;
  }

  std::wstring error_;
};

TEST_F(KorvoModuleTest, LoadsUsesAndUnloadsTwiceInOneProcess) {
  for (int round = 0; round < 2; ++round) {
    CTarsaPlugIn* plug_in = Load();
    ASSERT_NE(plug_in, nullptr);
    EXPECT_STREQ(plug_in->PlugInName(), L"Stance");
    CTarsaStandIn::SetTranslation(19663, L"Stellung");
    EXPECT_STREQ(plug_in->LocalPlugInName(), L"Stellung");
    EXPECT_TRUE(
        std::regex_match(plug_in->PlugInVersion(),
                         std::wregex(L"[A-Z][a-z]{2} [ 123]\\d \\d{4}  \\d\\d:\\d\\d:\\d\\d")));
    EXPECT_EQ(plug_in->PlugInLoadTime(), 2);
    EXPECT_FALSE(plug_in->AddToPlugInHelpMenu());
    // The Stance command first, then the plug-in's further commands in their order.
    const std::vector<const wchar_t*> names = {L"Stance", L"StanceCheck", L"StanceRestoreObjects",
                                               L"StanceImportPreview"};
    ASSERT_EQ(CTarsaPlugInLoader::Commands(*plug_in).size(), names.size());
    for (size_t i = 0; i < names.size(); ++i) {
      EXPECT_EQ(CTarsaPlugInLoader::Commands(*plug_in)[i], CTarsaCommand::Find(names[i], true));
    }
    const CTarsaPlugInLoader::DeveloperInfo* developer = CTarsaPlugInLoader::Developer(*plug_in);
    ASSERT_NE(developer, nullptr);
    EXPECT_EQ(developer->m_update_url, developer->m_website);
    EXPECT_NE(developer->m_address.find(L"\r\n"), std::wstring::npos);
    EXPECT_NE(CTarsaStandIn::StanceDynamicAccess(), nullptr);
    EXPECT_NE(ZK_ClassId::ClassId("CKorvoUserData"), nullptr);

    AddBox(L"door");
    Run(L"-_Stance _Save \"Closed\" door _Enter _Enter");
    Run(L"-_Move door _Enter 5,0,0");
    EXPECT_EQ(X(L"door"), 5);
    Run(L"-_Stance _Restore \"Closed\" _Enter");
    EXPECT_EQ(X(L"door"), 0);
    EXPECT_EQ(CTarsaStandIn::CommandLine().TakeOutput(), L"");
    EXPECT_EQ(ScriptedStanceCount(*plug_in), 1);
    EXPECT_EQ(plug_in->GetScriptObjectInterface(IID_NULL), nullptr);

    CTarsaStandIn::Reset();
    EXPECT_EQ(CTarsaCommand::Find(L"Stance", true), nullptr);
    EXPECT_EQ(CTarsaStandIn::StanceDynamicAccess(), nullptr);
    EXPECT_TRUE(CTarsaStandIn::PlugIns().empty());
    EXPECT_EQ(ZK_ClassId::ClassId("CKorvoUserData"), nullptr);
  }
}

TEST_F(KorvoModuleTest, TheHostAccessInterfaceAndTheWatcherAreWithdrawnAtUnload) {
  const size_t watchers = CTarsaStandIn::EventWatcherCount();
  CTarsaPlugIn* plug_in = Load();
  ASSERT_NE(plug_in, nullptr);
  ITsStanceDynamicAccess* access = CTarsaStandIn::StanceDynamicAccess();
  ASSERT_NE(access, nullptr);
  EXPECT_GT(CTarsaStandIn::EventWatcherCount(), watchers);
  CTarsaStandIn::UnloadPlugIn(*plug_in);  // OnUnloadPlugIn; the module stays open
  EXPECT_EQ(CTarsaStandIn::StanceDynamicAccess(), nullptr);
  EXPECT_EQ(CTarsaStandIn::EventWatcherCount(), watchers) << "the host would call unloaded code";
  Stance_SetTarsaDynamicAccess(access);  // as if the host still held it
  CTarsaPlugInLoader::Unload(*plug_in);  // closing the module destroys the plug-in object
  EXPECT_EQ(CTarsaStandIn::StanceDynamicAccess(), nullptr);
}

}  // namespace
