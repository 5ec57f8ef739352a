// tarsa: the modeller as a person runs it. It loads the stance plug-in, opens the model given
// (or starts an empty one) and reads command lines: from a terminal with line editing, or from a
// script (--script FILE, or standard input), printing exactly what the command line shows.
// With a display and a terminal it opens its window instead, and --picture FILE writes a picture
// of the window once the commands have run. The exit status is 0, 1 when a command failed or the
// script could not be read, 2 for bad arguments; a bad argument, model or plug-in gives one line on
// standard error, and without its plug-in the program runs on.
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iostream>

#include "host/tarsa/standin/tarsa_model_file.h"
#include "host/tarsa/standin/tarsa_plugin_loader.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_plugin.h"
#include "host/zefkit/standin/zk_uuid_seed.h"
#include "shell/action_report.h"
#include "shell/front_end.h"
#include "shell/plugin_loading.h"
#include "shell/program.h"
#include "shell/program_options.h"
#include "shell/script_front_end.h"
#include "shell/script_input.h"
#include "shell/session.h"
#include "shell/terminal.h"
#include "shell/window/window.h"

namespace {

void Fail(const std::wstring& message) {
  std::fprintf(stderr, "tarsa: %s\n", ZK_wString(message).ToUtf8().c_str());
}

void WriteOut(const std::wstring& text) {
  const std::string utf8 = ZK_wString(text).ToUtf8();
  std::fwrite(utf8.data(), 1, utf8.size(), stdout);
  std::fflush(stdout);
}

// The program run with `front_end`: 0, or 1 when the model could not be opened.
int Started(ITsFrontEnd& front_end, const TsProgramOptions& options, CTarsaPlugIn* plug_in) {
  std::wstring error;
  if (TsRunProgram(front_end, options.m_model, plug_in, error)) return 0;
  Fail(error);
  return 1;
}

// A terminal whose input ended (it was closed) cannot be asked about unsaved changes: they are
// kept in a file beside the model, which the user is told about.
void KeepUnsavedChanges() {
  if (!TarsaSession().IsModified()) return;
  const std::string model = TarsaSession().Path().empty() ? "Untitled.tsm" : TarsaSession().Path();
  const std::string kept = model + ".unsaved.tsm";
  std::wstring error;
  CTarsaDoc* doc = TarsaSession().Document();
  if (doc != nullptr && TsWriteModelFile(*doc, kept, error)) {
    Fail(L"the input ended; the unsaved changes are in " + ZK_wString::FromUtf8(kept).Text() +
         L".");
  } else {
    Fail(L"the input ended; the unsaved changes could not be kept: " + error);
  }
}

int Run(const TsProgramOptions& options) {
  if (options.m_seeded) ZK_SeedUuids(options.m_seed);
  CTarsaStandIn::SetUndoMemoryLimit(static_cast<size_t>(options.m_undo_limit_mb) << 20);
  std::wstring error;
  CTarsaPlugIn* plug_in = nullptr;
  if (!options.m_no_plugin) {
    plug_in = TsLoadStancePlugIn(options.m_plugin, error);
    if (plug_in == nullptr) Fail(error);  // the program models on without stances
  }
  TsActionReport().Start();
  // The window serves a person at a terminal with a display; scripts and pictures never wait.
  const bool person = options.m_script.empty() && options.m_picture.empty() && isatty(STDIN_FILENO);
  int status = 0;
  if (person && TsDisplayAvailable()) {
    status = TsRunInWindow([&](ITsFrontEnd& window) { return Started(window, options, plug_in); });
  } else if (person) {
    TsTerminal terminal(STDIN_FILENO, STDOUT_FILENO);
    status = Started(terminal, options, plug_in);
    if (status == 0 && terminal.Ended()) KeepUnsavedChanges();
  } else {
    std::ifstream file;
    if (!options.m_script.empty() && !TsOpenScript(options.m_script, file, error)) {
      Fail(error);
      return 1;
    }
    TsScriptFrontEnd script(options.m_script.empty() ? std::cin : file, WriteOut);
    status = Started(script, options, plug_in);
  }
  CTarsaCommandLine& command_line = CTarsaStandIn::CommandLine();
  if (status == 0 && !options.m_picture.empty() &&
      !TsWriteWindowPicture(options.m_picture, command_line.TakeOutput(), error)) {
    Fail(error);
    return 1;
  }
  if (status != 0) return status;
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
  TarsaSession().UnRegister();
  return status;
}
