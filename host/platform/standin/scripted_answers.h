// CTsScriptedAnswers: the user answers used when no front end installed its own: each question
// takes the next scripted answer, and a question with none left is cancelled (menu dismissed,
// text cancelled, question answered no). Every question is kept, with what it showed, until
// taken, so that a test or the host program's script mode can read what the user was asked.
// One instance, TsScriptedAnswers().
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "host/platform/user_answers.h"

class CTsScriptedAnswers : public IUserAnswers {
 public:
  // A question as it was shown.
  struct Question {
    enum Kind { menu, text, yes_no, label };
    Kind kind = menu;
    std::wstring title;     // text: the dialog's title; yes_no: the caption
    std::wstring prompt;    // text: the prompt; yes_no: the question; label: the current text
    std::wstring proposed;  // text: the proposed text
    std::vector<TsMenuItem> menu_items;
    int default_item = -1;  // menu: the default item's id, or -1
    POINT point{0, 0};      // menu: where it was shown
    int item = -1;          // label: the list item
  };

  // The next answers, in order: a menu item's id, an entered text (a text dialog or a label),
  // yes or no, or cancel (also: dismiss a menu).
  void Choose(UINT id);
  void Enter(const std::wstring& text);
  void Answer(bool yes);
  void Cancel();
  // The questions asked since the last call, in order.
  std::vector<Question> TakeQuestions();
  // Scripted answers not used yet.
  int PendingAnswers() const { return static_cast<int>(m_answers.size()); }
  // Drops answers and questions.
  void Reset();

  UINT ChooseMenuItem(HMENU menu, POINT point, HWND owner) override;
  bool AskText(const std::wstring& title, const std::wstring& prompt, const std::wstring& proposed,
               std::wstring& text) override;
  bool AskYesNo(const std::wstring& question, const std::wstring& caption) override;
  bool EditLabel(HWND list, int item, const std::wstring& current, std::wstring& text) override;

 private:
  struct ScriptedAnswer {
    bool cancel = true;
    UINT id = 0;
    std::wstring text;
    bool yes = false;
  };
  // The next answer, a cancel when none is left.
  ScriptedAnswer Next();

  std::deque<ScriptedAnswer> m_answers;
  std::vector<Question> m_questions;
};

CTsScriptedAnswers& TsScriptedAnswers();
