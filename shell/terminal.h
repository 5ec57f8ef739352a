// TsTerminal: the front end of a person at a terminal. It edits the line itself, with the
// terminal in raw mode while the program runs (keys typed while a command works wait for the
// next prompt, as they were typed):
// - Left, Right, Home, End, Backspace, Delete, Ctrl-A, Ctrl-E, Ctrl-K, Ctrl-U and Ctrl-W edit;
// - Up and Down recall earlier lines (with text typed, those that start with it), also from
//   earlier runs (~/.tarsa_history); Tab completes command, option and stance names;
// - Escape and Ctrl-C cancel the running command at once; at "Command:" they clear the line;
//   Escape never takes the key after it;
// - Ctrl-D at "Command:" on an empty line is Exit; at a command's prompt it cancels the command.
// Ctrl-C never ends the program. Questions of panels are asked on the
// command line; unsaved changes are asked about with Save, Discard and Cancel.
// One instance while the program runs at a terminal; it gives the terminal back as it found it.
#pragma once

#include <termios.h>

#include <string>

#include "shell/front_end.h"
#include "shell/line_editing.h"

class TsTerminal : public ITsFrontEnd {
 public:
  // Reads the terminal `in` and writes to `out` (file descriptors the caller keeps open).
  TsTerminal(int in, int out);
  ~TsTerminal() override;
  TsTerminal(const TsTerminal&) = delete;
  TsTerminal& operator=(const TsTerminal&) = delete;

  // Prints what the open panels show when it changed (shell/panel_text.h).
  void Idle() override;
  // False when the terminal's input has ended (it was closed or hung up).
  bool ReadLine(const std::wstring& prompt, std::wstring& line) override;
  void Write(const std::wstring& text) override;
  bool ShowsTyping() const override { return true; }
  IUserAnswers& Answers() override;
  UnsavedChanges AskAboutChanges(const std::wstring& document) override;

  // Whether the terminal's input ended.
  bool Ended() const { return m_ended; }

 private:
  // One key read: a character, or one of the keys below; `ended` at the end of the input.
  enum Key : int {
    ended = -1,
    escape = -2,
    up = -3,
    down = -4,
    left = -5,
    right = -6,
    home = -7,
    end = -8,
    erase = -9,   // Delete
    other = -10,  // a sequence of a key the editor does not use
  };
  int ReadKey();
  // The next byte within `wait_ms` milliseconds (-1: wait as long as it takes); -1 when none.
  int ReadByte(int wait_ms);
  void Show();  // the prompt and the line, the cursor where it is
  void Out(const std::wstring& text);
  // What a key does to the line being edited: true when the line is done, in `line`.
  bool Take(int key, std::wstring& line);

  int m_in;
  int m_out;
  bool m_is_terminal = false;
  termios m_cooked{};
  bool m_ended = false;
  int m_pending = -1;  // a byte read after an Escape, to be taken as the next key's
  TsLineHistory m_history;
  std::wstring m_prompt;
  std::wstring m_text;
  size_t m_cursor = 0;
};
