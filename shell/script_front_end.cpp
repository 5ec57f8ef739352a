#include "shell/script_front_end.h"

#include "shell/command_line_answers.h"
#include "shell/panel_text.h"

void TsScriptFrontEnd::Idle() { TsShowPanelChanges(); }

bool TsScriptFrontEnd::ReadLine(const std::wstring&, std::wstring& line) {
  return m_lines.Next(line);
}

IUserAnswers& TsScriptFrontEnd::Answers() { return TarsaCommandLineAnswers(); }

ITsFrontEnd::UnsavedChanges TsScriptFrontEnd::AskAboutChanges(const std::wstring& document) {
  return Answers().AskYesNo(L"Drop the unsaved changes to " + document + L"?", L"")
             ? UnsavedChanges::discard
             : UnsavedChanges::cancel;
}
