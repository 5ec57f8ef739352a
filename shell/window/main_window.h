// TsMainWindow: the host program's window, and the front end the program runs it as. The view of
// the model fills it; below are the command line's output, the prompt that waits (its options are
// links that answer it, and the text wraps within the window's width) and the line where the user
// types; the host's open list panel is docked at the right, and the status bar says which stances
// the model matches ("Matches: Exploded"); the menus run the host's file, edit and view commands.
// The stance selected in the panel is previewed in the view: its members' outlines where a
// restore would put them.
// The widgets only report what the user does to a TsWindowInput, which answers the command line:
// see shell/window_input.h. Owned by the program while it runs.
#pragma once

#include <QMainWindow>
#include <memory>
#include <string>
#include <vector>

#include "shell/front_end.h"
#include "shell/line_editing.h"
#include "shell/window_input.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class TsPanelDock;
class TsModelView;
class TsWindowAnswers;

class TsMainWindow : public QMainWindow, public ITsFrontEnd {
 public:
  TsMainWindow();
  ~TsMainWindow() override;

  // Shows the view, the panel and the title as the host has them now.
  void Refresh();

  // The front end: the host's idle work and a refresh; the next line from what the user does;
  // text appended to the output; the window's dialogs; a message box with Save, Discard, Cancel.
  void Idle() override;
  bool ReadLine(const std::wstring& prompt, std::wstring& line) override;
  void Write(const std::wstring& text) override;
  bool ShowsTyping() const override { return true; }
  IUserAnswers& Answers() override;
  UnsavedChanges AskAboutChanges(const std::wstring& document) override;

  TsPanelDock* Dock() const { return m_dock; }
  TsModelView* View() const { return m_view; }
  QLineEdit* Input() const { return m_input; }
  QLabel* PromptLabel() const { return m_prompt; }
  TsWindowInput& UserInput() { return m_user; }
  // The options of the prompt that waits, as its links show them, in its order.
  const std::vector<std::wstring>& OptionLabels() const { return m_option_labels; }
  // Clicks the option link `index` of the prompt that waits.
  void ChooseOption(size_t index);

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeMenus();
  // Previews the stance selected in the panel, where a restore would put its members; none when
  // none is selected.
  void UpdatePreview();
  // Runs a host command as the menus do: at once at "Command:", else after cancelling the
  // command that waits.
  void RunFromMenu(const std::wstring& command);
  // A file chosen in a dialog, as a quoted answer, and the command run with it.
  void RunWithFile(const wchar_t* command, const QString& caption, bool save);
  void ShowPrompt(const std::wstring& prompt);
  // Tab: completes the last word of the line.
  void Complete();
  // Up and Down: the earlier or later line of the history that starts as the typed text does.
  void Recall(int step);
  // Undo or Redo of the model, whatever has the focus: the typing field keeps its own undo while
  // it holds text.
  bool UndoKey(QObject* watched, QKeyEvent* event);

  TsModelView* m_view = nullptr;
  QPlainTextEdit* m_output = nullptr;
  QLabel* m_prompt = nullptr;
  QLineEdit* m_input = nullptr;
  TsPanelDock* m_dock = nullptr;
  std::unique_ptr<TsWindowAnswers> m_answers;
  TsWindowInput m_user;
  TsLineHistory m_history;
  std::wstring m_shown_prompt;
  std::vector<std::wstring> m_option_labels;
  std::vector<std::wstring> m_option_words;
};
