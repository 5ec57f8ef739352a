// CTarsaScriptInput: where the command line's lines come from. At the bottom the user: a terminal
// or a script given to the program; above it the script files RunScript started, newest on top,
// each read to its end before the one below goes on. In script files, lines whose first
// non-blank character is "#" are comments, and are skipped. One instance, TarsaScriptInput(),
// installed as the command line's reader by the program.
#pragma once

#include <functional>
#include <istream>
#include <memory>
#include <string>
#include <vector>

class CTarsaScriptInput {
 public:
  using Reader = std::function<bool(const std::wstring& prompt, std::wstring& line)>;

  CTarsaScriptInput();
  ~CTarsaScriptInput();

  // The user's input: a reader of a terminal, whose typing the terminal shows itself.
  void SetTerminal(Reader reader);
  // The user's input: a script read from `stream`, which the caller keeps alive.
  void SetScript(std::istream& stream);
  // Runs the script file at `path` before anything more is read: false, with a message in
  // `error`, when it cannot be read.
  bool PushScriptFile(const std::string& path, std::wstring& error);

  // True when the next line would come from a script: a script file RunScript started, or a
  // script given as the user's input. No person is there to answer a question.
  bool ReadsScript() const { return !m_files.empty() || m_script != nullptr; }

  // The next line: from the newest script that has one left, else from the user. Lines from
  // scripts are shown with their prompts on the command line; a terminal's are not. False at
  // the end of the user's input.
  bool Read(const std::wstring& prompt, std::wstring& line);

 private:
  struct Script;
  std::vector<std::unique_ptr<Script>> m_files;
  std::unique_ptr<Script> m_script;
  Reader m_terminal;
};

CTarsaScriptInput& TarsaScriptInput();
