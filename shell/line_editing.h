// What the terminal and the window share in editing the command line: the history of the lines
// entered, browsed with Up and Down (with text typed, only the lines that start with it), kept in
// a file between runs; and Tab completion of the line's last word (shell/completion.h). Knows no
// terminal and no widget.
#pragma once

#include <string>
#include <vector>

class TsLineHistory {
 public:
  // The file the history is kept in: its lines are read now, and each line added is appended.
  // Without one the history lasts as long as the program.
  void Keep(const std::string& path);
  // A line entered: kept unless empty or the same as the one before. Browsing starts anew.
  void Add(const std::wstring& line);
  // What Up (`step` -1) or Down (1) shows in place of `shown`: the line before or after the one
  // recalled last among those that start with what was typed when browsing began; Down past the
  // newest gives back what was typed. `shown` unchanged when there is nothing further.
  std::wstring Recall(int step, const std::wstring& shown);
  const std::vector<std::wstring>& Lines() const { return m_lines; }

 private:
  std::vector<std::wstring> m_lines;
  std::string m_path;
  bool m_browsing = false;
  size_t m_at = 0;          // the line recalled last; the count past the newest
  std::wstring m_typed;     // what was typed when browsing began
  std::wstring m_recalled;  // what the last Recall gave
};

// A line with its last word completed at `prompt`.
struct TsCompletedLine {
  std::wstring line;                  // the line as completed
  std::vector<std::wstring> choices;  // every completion, when there are several
};
// Completes the last word of `line`: with the one completion and a blank; with the longest
// beginning that the completions share (letter case as the first has it) and the choices, when
// there are several; unchanged when there is none.
TsCompletedLine TsCompleteLine(const std::wstring& prompt, const std::wstring& line);
