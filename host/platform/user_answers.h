// IUserAnswers: where the answers of modal interactions come from: the choice in a popup menu,
// the text entered in a one-line text dialog, a yes-or-no question, and the text typed over a
// list item's label. A front end with a window system implements it and installs it with
// SetUserAnswers; otherwise the scripted answers of the stand-in answer (host/platform/standin/
// scripted_answers.h), so that tests and script mode drive every dialog. Everything is asked on
// the user-interface thread, and each call returns when the user has answered.
#pragma once

#include <string>

#include "host/platform/menu.h"

class IUserAnswers {
 public:
  virtual ~IUserAnswers() = default;
  // The id of the item chosen in `menu`, shown at `point` for `owner`; 0 when it was dismissed.
  virtual UINT ChooseMenuItem(HMENU menu, POINT point, HWND owner) = 0;
  // A text dialog with a title, a prompt and a proposed text: true with the text entered, false
  // when cancelled.
  virtual bool AskText(const std::wstring& title, const std::wstring& prompt,
                       const std::wstring& proposed, std::wstring& text) = 0;
  // True for yes, false for no.
  virtual bool AskYesNo(const std::wstring& question, const std::wstring& caption) = 0;
  // Edits the label of a list item that shows `current`: true with the new text, false when the
  // edit was cancelled.
  virtual bool EditLabel(HWND list, int item, const std::wstring& current, std::wstring& text) = 0;
};

// The answers in use: the installed ones, else the scripted answers.
IUserAnswers& UserAnswers();
// Installs a front end's answers (not owned; null goes back to the scripted answers).
void SetUserAnswers(IUserAnswers* answers);
