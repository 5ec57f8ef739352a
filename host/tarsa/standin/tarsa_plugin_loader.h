// CTarsaPlugInLoader: how the host loads a plug-in module, a shared library file such as
// Korvo.tsp, at run time. Opening the module builds its static objects: the plug-in object and its
// command objects, which the loader attaches to the plug-in being loaded, and the class library's
// application object. The loader then checks the module's exports, reads the developer
// information, starts the application (InitInstance) and loads the plug-in through
// CTarsaStandIn::LoadPlugIn (OnLoadPlugIn). Unloading calls OnUnloadPlugIn, ends the application
// (ExitInstance) and closes the module, which destroys its static objects in reverse order.
//
// Every module must export, with C linkage:
//   unsigned int TarsaPlugInSdkVersion(), TarsaPlugInSdkServiceRelease(): both
//   kTarsaPlugInSdkVersion;
//   const wchar_t* TarsaPlugInDeveloperOrganization(), ...Address(), ...Country(), ...Phone(),
//   ...Fax(), ...Email(), ...Website(), and TarsaPlugInUpdateURL().
#pragma once

#include <string>
#include <vector>

class CTarsaCommand;
class CTarsaPlugIn;

class CTarsaPlugInLoader {
 public:
  struct DeveloperInfo {
    std::wstring m_organization, m_address, m_country, m_phone, m_fax, m_email, m_website,
        m_update_url;
  };

  // Opens, checks and loads the module at `path` (a bare file name is in the current folder): the
  // loaded plug-in, which the module owns, or null with a message naming the file and the reason
  // in `error`. A refused module (no name, OnLoadPlugIn false or throwing) is closed again and
  // leaves the host as it was.
  static CTarsaPlugIn* Load(const std::string& path, std::wstring& error);
  // Unloads a plug-in that Load gave and closes its module: false for any other plug-in.
  static bool Unload(CTarsaPlugIn& plug_in);
  // Unloads every loaded module, the newest first.
  static void UnloadAll();

  // What the module of a loaded plug-in says of its developer, and the commands it made; null
  // for a plug-in that Load did not give.
  static const DeveloperInfo* Developer(const CTarsaPlugIn& plug_in);
  static std::vector<CTarsaCommand*> Commands(const CTarsaPlugIn& plug_in);
  // The module file of a loaded plug-in, or an empty text.
  static std::string Path(const CTarsaPlugIn& plug_in);

 private:
  friend class CTarsaCommand;
  friend class CTarsaPlugIn;
  // Called by the constructors of the module's static objects while a module opens.
  static void NoteConstructed(CTarsaPlugIn& plug_in);
  static void NoteConstructed(CTarsaCommand& command);
};
