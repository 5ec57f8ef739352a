// ITsFrontEnd: what stands between the host's command line and the person or script using the
// program: where lines come from, where output goes, how the questions of panels and menus are
// answered, and what happens to unsaved changes. The script, terminal and window front ends
// implement it; the program installs one with TsFrontEndScope and runs the command line.
#pragma once

#include <string>

#include "host/platform/user_answers.h"

class ITsFrontEnd {
 public:
  enum class UnsavedChanges { save, discard, cancel };

  virtual ~ITsFrontEnd() = default;

  // Called whenever the command line waits for input, before the line is read: the host is idle,
  // and the front end shows what changed (the panels above all).
  virtual void Idle() = 0;
  // The next line the user gives at `prompt`: true with the line; false at the end of the input,
  // or when the user acted elsewhere (a panel, a menu) while a command waited, which cancels it.
  virtual bool ReadLine(const std::wstring& prompt, std::wstring& line) = 0;
  // Shows text the command line prints.
  virtual void Write(const std::wstring& text) = 0;
  // Whether the front end shows the user's typing itself (terminal, window); a script's lines are
  // shown again with their prompts instead.
  virtual bool ShowsTyping() const = 0;
  // The answers to the modal questions of panels and menus; the front end keeps them.
  virtual IUserAnswers& Answers() = 0;
  // What to do with the unsaved changes of `document` before they would be dropped.
  virtual UnsavedChanges AskAboutChanges(const std::wstring& document) = 0;
};

// Installs `front_end` while it lives: the command line reads from it (after the script files
// that RunScript started, which come first) and writes to it, and its answers answer the panels
// and menus. The front end installed before, or none, comes back at the end of the scope.
class TsFrontEndScope {
 public:
  explicit TsFrontEndScope(ITsFrontEnd& front_end);
  ~TsFrontEndScope();
  TsFrontEndScope(const TsFrontEndScope&) = delete;
  TsFrontEndScope& operator=(const TsFrontEndScope&) = delete;

 private:
  ITsFrontEnd* m_before;
};

// The front end installed now, or null.
ITsFrontEnd* TsFrontEnd();

// A question on the command line, for the front ends that have no other way to ask: "Save the
// changes to NAME? ( Save Discard Cancel )"; Enter saves, cancelling cancels.
ITsFrontEnd::UnsavedChanges TsAskAboutChangesOnCommandLine(const std::wstring& document);
