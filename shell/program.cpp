#include "shell/program.h"

#include "host/tarsa/standin/tarsa_plugin_loader.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_plugin.h"
#include "shell/front_end.h"
#include "shell/session.h"

bool TsRunProgram(ITsFrontEnd& front_end, const std::string& model, CTarsaPlugIn* plug_in,
                  std::wstring& error) {
  const TsFrontEndScope installed(front_end);
  CTarsaCommandLine& command_line = CTarsaStandIn::CommandLine();
  if (plug_in) {
    const std::string path = CTarsaPlugInLoader::Path(*plug_in);
    const std::string file = path.substr(path.find_last_of('/') + 1);
    command_line.Print(std::wstring(L"Loaded the plug-in ") + plug_in->PlugInName() + L" from " +
                       ZK_wString::FromUtf8(file).Text() + L".\n");
  }
  if (!TarsaSession().Start(model, error)) return false;
  if (!model.empty()) command_line.Print(L"Opened " + TarsaSession().DisplayName() + L".\n");
  if (front_end.ShowsTyping()) {
    command_line.Print(L"Help lists the commands; Exit ends the program.\n");
  }
  command_line.ProcessInput();
  return true;
}
