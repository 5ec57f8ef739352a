#include "shell/front_end.h"

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_get.h"
#include "shell/script_input.h"

namespace {

ITsFrontEnd* g_front_end = nullptr;

// Connects the command line to the front end `front_end`, or to nothing.
void Connect(ITsFrontEnd* front_end) {
  g_front_end = front_end;
  CTarsaCommandLine& command_line = CTarsaStandIn::CommandLine();
  SetUserAnswers(front_end ? &front_end->Answers() : nullptr);
  if (front_end == nullptr) {
    command_line.SetReader(nullptr);
    command_line.SetWriter(nullptr);
    command_line.ShowQuietMacros(nullptr);
    return;
  }
  command_line.SetWriter([front_end](const std::wstring& text) { front_end->Write(text); });
  command_line.SetReader([front_end](const std::wstring& prompt, std::wstring& line) {
    front_end->Idle();
    return TarsaScriptInput().Read(prompt, line, *front_end);
  });
  // A person sees what the panels and menus run; a script's transcript stays as the host has it.
  if (front_end->ShowsTyping()) {
    command_line.ShowQuietMacros([front_end](const std::wstring& text) { front_end->Write(text); });
  } else {
    command_line.ShowQuietMacros(nullptr);
  }
}

}  // namespace

TsFrontEndScope::TsFrontEndScope(ITsFrontEnd& front_end) : m_before(g_front_end) {
  Connect(&front_end);
}

TsFrontEndScope::~TsFrontEndScope() { Connect(m_before); }

ITsFrontEnd* TsFrontEnd() { return g_front_end; }

ITsFrontEnd::UnsavedChanges TsAskAboutChangesOnCommandLine(const std::wstring& document) {
  CTarsaGetOption get;
  get.AcceptNothing(true);
  const std::wstring prompt = L"Save the changes to " + document + L"? <Save>";
  get.SetCommandPrompt(prompt.c_str());
  const int save = get.AddCommandOption(CTarsaCommandOptionName(L"Save", L"Save"));
  const int discard = get.AddCommandOption(CTarsaCommandOptionName(L"Discard", L"Discard"));
  get.AddCommandOption(CTarsaCommandOptionName(L"Cancel", L"Cancel"));
  switch (get.GetOption()) {
    case CTarsaGet::nothing:
      return ITsFrontEnd::UnsavedChanges::save;
    case CTarsaGet::option: {
      const int index = get.Option()->m_option_index;
      if (index == save) return ITsFrontEnd::UnsavedChanges::save;
      if (index == discard) return ITsFrontEnd::UnsavedChanges::discard;
      return ITsFrontEnd::UnsavedChanges::cancel;
    }
    default:
      return ITsFrontEnd::UnsavedChanges::cancel;
  }
}
