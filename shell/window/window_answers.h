// TsWindowAnswers: the window's answers to the questions of panels and menus, asked as a person
// expects them in a window: a popup menu at the pointer with its default item in bold, the save
// dialog as a text dialog, questions as message boxes with Yes and No, and label edits in place
// on the panel dock's list. The program installs it with SetUserAnswers while the window runs;
// each call returns when the user has answered. It owns nothing; the dock outlives it.
#pragma once

#include <string>

#include "host/platform/user_answers.h"

class QWidget;
class TsPanelDock;

class TsWindowAnswers : public IUserAnswers {
 public:
  // Dialogs are centred on `parent` (may be null); labels are edited on `dock`'s list.
  TsWindowAnswers(QWidget* parent, TsPanelDock& dock) : m_parent(parent), m_dock(dock) {}

  // The chosen item's id; 0 when the menu was dismissed.
  UINT ChooseMenuItem(HMENU menu, POINT point, HWND owner) override;
  // False when the dialog was cancelled.
  bool AskText(const std::wstring& title, const std::wstring& prompt, const std::wstring& proposed,
               std::wstring& text) override;
  // No is the default button; closing the box answers no.
  bool AskYesNo(const std::wstring& question, const std::wstring& caption) override;
  // False when the edit was cancelled with Escape.
  bool EditLabel(HWND list, int item, const std::wstring& current, std::wstring& text) override;

 private:
  QWidget* m_parent;
  TsPanelDock& m_dock;
};
