// TsScriptFrontEnd: the program run on a script (--script FILE, or lines on standard input that
// is no terminal). The script's lines answer every prompt and are shown with their prompts, the
// questions of panels and menus are asked on the command line, and the output is one transcript,
// exactly what the command line shows. Unsaved changes are dropped only when the script answers
// Yes to "Drop the unsaved changes to NAME? <No>".
#pragma once

#include <functional>
#include <istream>
#include <string>

#include "shell/front_end.h"
#include "shell/script_input.h"

class TsScriptFrontEnd : public ITsFrontEnd {
 public:
  // Reads `script`, which the caller keeps alive, and writes the output through `write`.
  TsScriptFrontEnd(std::istream& script, std::function<void(const std::wstring&)> write)
      : m_lines(script), m_write(std::move(write)) {}

  // Prints what the open panels show when it changed (shell/panel_text.h).
  void Idle() override;
  bool ReadLine(const std::wstring& prompt, std::wstring& line) override;
  void Write(const std::wstring& text) override { m_write(text); }
  bool ShowsTyping() const override { return false; }
  IUserAnswers& Answers() override;
  // Discard on Yes, else cancel: a script never saves by surprise.
  UnsavedChanges AskAboutChanges(const std::wstring& document) override;

 private:
  TsScriptLines m_lines;
  std::function<void(const std::wstring&)> m_write;
};
