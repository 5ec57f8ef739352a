// CTarsaCommandLineAnswers: the host program's front end for the questions of panels and menus.
// The program has no window system, so each question is asked on the command line when it
// comes, like any prompt, and answered from the same input as the commands: a menu becomes a
// prompt whose options are its items, the save dialog a prompt proposing its text, a yes-or-no
// question a prompt with Yes and No, and a label edit a prompt proposing the current text. The
// program installs the one instance, TarsaCommandLineAnswers(), with SetUserAnswers at start.
#pragma once

#include <string>

#include "host/platform/user_answers.h"

class CTarsaCommandLineAnswers : public IUserAnswers {
 public:
  // The chosen item's id; 0 when the user pressed Enter, cancelled or named no item.
  UINT ChooseMenuItem(HMENU menu, POINT point, HWND owner) override;
  // Enter takes the proposed text; false when cancelled.
  bool AskText(const std::wstring& title, const std::wstring& prompt, const std::wstring& proposed,
               std::wstring& text) override;
  // Enter, like cancelling, answers no.
  bool AskYesNo(const std::wstring& question, const std::wstring& caption) override;
  // Enter keeps the current text; false when cancelled.
  bool EditLabel(HWND list, int item, const std::wstring& current, std::wstring& text) override;
};

CTarsaCommandLineAnswers& TarsaCommandLineAnswers();
