// tarsa: the modeller as a person runs it. It loads the stance plug-in, opens the model given
// (or starts an empty one) and reads command lines: from a terminal with line editing, or from a
// script (--script FILE, or standard input), printing exactly what the command line shows. The
// With a display and a terminal it opens its window instead, and --picture FILE writes a picture
// of the window once the commands have run. The exit status is 0, 1 when a command failed or the
// script could not be read, 2 for bad arguments; a bad argument, model or plug-in gives one line on
// standard error.
#include <unistd.h>

#include <cstdio>
#include <iostream>

#include "host/tarsa/standin/tarsa_plugin_loader.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_plugin.h"
#include "host/zefkit/standin/zk_uuid_seed.h"
#include "shell/command_line_answers.h"
#include "shell/panel_text.h"
#include "shell/plugin_loading.h"
#include "shell/program_options.h"
#include "shell/script_input.h"
#include "shell/session.h"
#include "shell/terminal.h"
#include "shell/window/window.h"

namespace {

void Fail(const std::wstring& message) {
  std::fprintf(stderr, "tarsa: %s\n", ZK_wString(message).ToUtf8().c_str());
}

void Write(const std::wstring& text) {
  const std::string utf8 = ZK_wString(text).ToUtf8();
  std::fwrite(utf8.data(), 1, utf8.size(), stdout);
  std::fflush(stdout);
}

int Run(const TsProgramOptions& options) {
  if (options.m_seeded) ZK_SeedUuids(options.m_seed);
  CTarsaStandIn::SetUndoMemoryLimit(static_cast<size_t>(options.m_undo_limit_mb) << 20);
  CTarsaCommandLine& command_line = CTarsaStandIn::CommandLine();
  std::wstring error;
  CTarsaPlugIn* plug_in = nullptr;
  if (!options.m_no_plugin) {
    plug_in = TsLoadStancePlugIn(options.m_plugin, error);
    if (plug_in == nullptr) {
      Fail(error);
      return 1;
    }
  }
  CTarsaScriptInput& input = TarsaScriptInput();
  // The window serves a person at a terminal with a display; scripts and pictures never wait.
  const bool terminal =
      options.m_script.empty() && options.m_picture.empty() && isatty(STDIN_FILENO);
  const bool window = terminal && TsDisplayAvailable();
  if (!options.m_script.empty() && !input.PushScriptFile(options.m_script, error)) {
    Fail(error);
    return 1;
  }
  if (!TarsaSession().Start(options.m_model, error)) {
    Fail(error);
    return 1;
  }
  if (!window) command_line.SetWriter(Write);
  if (plug_in) {
    const std::string path = CTarsaPlugInLoader::Path(*plug_in);
    const std::string file = path.substr(path.find_last_of('/') + 1);
    command_line.Print(std::wstring(L"Loaded the plug-in ") + plug_in->PlugInName() + L" from " +
                       ZK_wString::FromUtf8(file).Text() + L".\n");
  }
  if (!options.m_model.empty())
    command_line.Print(L"Opened " + TarsaSession().DisplayName() + L".\n");
  if (window) {
    SetUserAnswers(&TarsaCommandLineAnswers());
    TsRunCommandLineInWindow();
    return command_line.FailedCommandCount() > 0 ? 1 : 0;
  }
  if (terminal) {
    input.SetTerminal(TsTerminalReader());
    command_line.Print(L"Help lists the commands; Exit ends the program.\n");
  } else if (options.m_script.empty()) {
    input.SetScript(std::cin);
  }
  // Waiting for the user is when the host is idle, and when the panels show what changed.
  command_line.SetReader([&input](const std::wstring& prompt, std::wstring& line) {
    TsShowPanelChanges();
    return input.Read(prompt, line);
  });
  SetUserAnswers(&TarsaCommandLineAnswers());
  command_line.ProcessInput();
  if (!options.m_picture.empty() &&
      !TsWriteWindowPicture(options.m_picture, command_line.TakeOutput(), error)) {
    Fail(error);
    return 1;
  }
  return command_line.FailedCommandCount() > 0 ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
  TsProgramOptions options;
  std::string error;
  if (!TsParseProgramOptions(std::vector<std::string>(argv + 1, argv + argc), options, error)) {
    std::fprintf(stderr, "tarsa: %s\n", error.c_str());
    return 2;
  }
  if (options.m_help) {
    std::fputs(kTsUsage, stdout);
    return 0;
  }
  const int status = Run(options);
  // Documents go before the plug-in whose records their objects carry.
  CTarsaStandIn::Reset();
  SetUserAnswers(nullptr);
  TarsaSession().UnRegister();
  return status;
}
