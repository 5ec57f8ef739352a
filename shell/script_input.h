// CTarsaScriptInput: where the command line's lines come from. At the bottom the user, through
// the front end installed (a terminal, the window, or the script given to the program); above it
// the script files that RunScript started, newest on top, each read to its end before the one
// below goes on. One instance, TarsaScriptInput(), read by the command line's reader that
// TsFrontEndScope installs.
#pragma once

#include <fstream>
#include <istream>
#include <memory>
#include <string>
#include <vector>

class ITsFrontEnd;

// The lines of a script: lines whose first non-blank character is "#" are comments, and are
// skipped; a "\r" before the line's end is dropped. The caller keeps the stream alive.
class TsScriptLines {
 public:
  explicit TsScriptLines(std::istream& stream) : m_stream(stream) {}
  // The next line that is not a comment; false at the end.
  bool Next(std::wstring& line);

 private:
  std::istream& m_stream;
};

// Opens the script at `path` into `file`: false, with a message in `error`, when it is a folder or
// cannot be read.
bool TsOpenScript(const std::string& path, std::ifstream& file, std::wstring& error);

class CTarsaScriptInput {
 public:
  CTarsaScriptInput();
  ~CTarsaScriptInput();

  // Runs the script file at `path` before anything more is read: false, with a message in
  // `error`, when it cannot be read.
  bool PushScriptFile(const std::string& path, std::wstring& error);

  // True when the next line would come from a script: a script file RunScript started, or a
  // front end that is a script. No person is there to answer a question.
  bool ReadsScript() const;

  // The next line: from the newest script file that has one left, else from `user`. Lines from
  // script files are shown with their prompts on the command line, the user's only when the
  // front end does not show the typing itself. False at the end of the user's input.
  bool Read(const std::wstring& prompt, std::wstring& line, ITsFrontEnd& user);

 private:
  struct File;
  std::vector<std::unique_ptr<File>> m_files;
};

CTarsaScriptInput& TarsaScriptInput();
