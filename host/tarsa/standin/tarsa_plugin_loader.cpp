#include "host/tarsa/standin/tarsa_plugin_loader.h"

#include <dlfcn.h>

#include <algorithm>
#include <memory>

#include "host/platform/win_app.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_command.h"
#include "host/tarsa/tarsa_plugin.h"
#include "host/zefkit/zk_string.h"

namespace {

struct Module {
  std::string m_path;
  void* m_handle = nullptr;
  std::vector<CTarsaPlugIn*> m_plug_ins;  // made while the module opened
  std::vector<CTarsaCommand*> m_commands;
  std::vector<CWinApp*> m_apps;  // the class library's applications, started once checked
  bool m_apps_started = false;
  CTarsaPlugInLoader::DeveloperInfo m_developer;
};

// The module being opened, while its static objects are built. A plain pointer, so that static
// objects built or destroyed at any time of the program find it valid.
Module* g_opening = nullptr;

std::vector<std::unique_ptr<Module>>& Modules() {
  static std::vector<std::unique_ptr<Module>> modules;
  return modules;
}

Module* ModuleOf(const CTarsaPlugIn& plug_in) {
  for (const auto& module : Modules()) {
    if (module->m_plug_ins.front() == &plug_in) return module.get();
  }
  return nullptr;
}

std::wstring Wide(const std::string& text) { return ZK_wString::FromUtf8(text).Text(); }

// Starts the module's applications: false when one refused.
bool StartApps(Module& module) {
  module.m_apps_started = true;
  for (CWinApp* app : module.m_apps) {
    if (!app->InitInstance()) return false;
  }
  return true;
}

// Ends the module's applications, then closes the module; its static objects are destroyed.
void Close(Module& module) {
  if (module.m_apps_started) {
    for (CWinApp* app : module.m_apps) app->ExitInstance();
  }
  if (module.m_handle) dlclose(module.m_handle);
  module.m_handle = nullptr;
}

// Checks the exports and reads the developer information: an empty text, or why the module is
// refused.
std::wstring Check(Module& module) {
  using Version = unsigned int (*)();
  for (const char* name : {"TarsaPlugInSdkVersion", "TarsaPlugInSdkServiceRelease"}) {
    auto version = reinterpret_cast<Version>(dlsym(module.m_handle, name));
    if (version == nullptr) return L"it has no export " + Wide(name);
    if (version() != kTarsaPlugInSdkVersion) {
      ZK_wString reason;
      reason.Format(L"%s gives 0x%08X; this host needs 0x%08X", Wide(name).c_str(), version(),
                    kTarsaPlugInSdkVersion);
      return reason.Text();
    }
  }
  using Text = const wchar_t* (*)();
  const std::pair<const char*, std::wstring*> texts[] = {
      {"TarsaPlugInDeveloperOrganization", &module.m_developer.m_organization},
      {"TarsaPlugInDeveloperAddress", &module.m_developer.m_address},
      {"TarsaPlugInDeveloperCountry", &module.m_developer.m_country},
      {"TarsaPlugInDeveloperPhone", &module.m_developer.m_phone},
      {"TarsaPlugInDeveloperFax", &module.m_developer.m_fax},
      {"TarsaPlugInDeveloperEmail", &module.m_developer.m_email},
      {"TarsaPlugInDeveloperWebsite", &module.m_developer.m_website},
      {"TarsaPlugInUpdateURL", &module.m_developer.m_update_url}};
  for (const auto& text : texts) {
    auto get = reinterpret_cast<Text>(dlsym(module.m_handle, text.first));
    if (get == nullptr) return L"it has no export " + Wide(text.first);
    const wchar_t* value = get();
    *text.second = value ? value : L"";
  }
  if (module.m_plug_ins.size() != 1) {
    return module.m_plug_ins.empty() ? L"it made no plug-in object"
                                     : L"it made more than one plug-in object";
  }
  // The host shows the name wherever it lists plug-ins.
  const CTarsaPlugIn& plug_in = *module.m_plug_ins.front();
  if (plug_in.PlugInName() == nullptr || plug_in.LocalPlugInName() == nullptr) {
    return L"its plug-in gives no name";
  }
  return L"";
}

}  // namespace

CTarsaPlugIn* CTarsaPlugInLoader::Load(const std::string& path, std::wstring& error) {
  auto module = std::make_unique<Module>();
  module->m_path = path;
  // Given a bare file name, dlopen searches the library folders; the user means this folder.
  const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
  g_opening = module.get();
  module->m_handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  g_opening = nullptr;
  module->m_apps = AfxTakeNewApps();
  const auto refuse = [&](const std::wstring& reason) -> CTarsaPlugIn* {
    Close(*module);
    error = L"Could not load " + Wide(path) + L": " + reason + L".";
    return nullptr;
  };
  if (module->m_handle == nullptr) {
    const char* reason = dlerror();
    return refuse(reason ? Wide(reason) : L"it cannot be opened");
  }
  const std::wstring reason = Check(*module);
  if (!reason.empty()) return refuse(reason);
  if (!StartApps(*module)) return refuse(L"its application did not start");
  CTarsaPlugIn* plug_in = module->m_plug_ins.front();
  for (CTarsaCommand* command : module->m_commands) command->m_plug_in = plug_in;
  std::wstring why;
  if (!CTarsaStandIn::LoadPlugIn(*plug_in, &why)) {
    return refuse(why.empty() ? L"the plug-in refused to load" : why);
  }
  Modules().push_back(std::move(module));
  return plug_in;
}

bool CTarsaPlugInLoader::Unload(CTarsaPlugIn& plug_in) {
  auto& modules = Modules();
  const auto found = std::find_if(modules.begin(), modules.end(), [&](const auto& module) {
    return module->m_plug_ins.front() == &plug_in;
  });
  if (found == modules.end()) return false;
  std::unique_ptr<Module> module = std::move(*found);
  modules.erase(found);
  CTarsaStandIn::UnloadPlugIn(plug_in);
  Close(*module);
  return true;
}

void CTarsaPlugInLoader::UnloadAll() {
  while (!Modules().empty()) Unload(*Modules().back()->m_plug_ins.front());
}

const CTarsaPlugInLoader::DeveloperInfo* CTarsaPlugInLoader::Developer(
    const CTarsaPlugIn& plug_in) {
  const Module* module = ModuleOf(plug_in);
  return module ? &module->m_developer : nullptr;
}

std::vector<CTarsaCommand*> CTarsaPlugInLoader::Commands(const CTarsaPlugIn& plug_in) {
  const Module* module = ModuleOf(plug_in);
  return module ? module->m_commands : std::vector<CTarsaCommand*>();
}

std::string CTarsaPlugInLoader::Path(const CTarsaPlugIn& plug_in) {
  const Module* module = ModuleOf(plug_in);
  return module ? module->m_path : std::string();
}

void CTarsaPlugInLoader::NoteConstructed(CTarsaPlugIn& plug_in) {
  if (g_opening) g_opening->m_plug_ins.push_back(&plug_in);
}

void CTarsaPlugInLoader::NoteConstructed(CTarsaCommand& command) {
  if (g_opening) g_opening->m_commands.push_back(&command);
}
