// TsMainWindow: the host program's window. The view of the model fills it; below are the command
// line's output and the line where the user types at the prompt shown beside it, with a button
// for each option the prompt offers; the host's open list panel is docked at the right; the menus
// run the host's file, edit and view commands. The window serves as the command line's reader
// and writer: Read() shows the prompt and runs the window's events until the user answers it
// (typing a line, clicking an option, picking objects in the view when the prompt takes them,
// choosing a menu command), acts on the panel while a command waits, or closes the window.
// Owned by the program while it runs.
#pragma once

#include <QMainWindow>
#include <optional>
#include <string>
#include <vector>

class CTarsaObject;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QHBoxLayout;
class TsPanelDock;
class TsModelView;

class TsMainWindow : public QMainWindow {
 public:
  TsMainWindow();

  // Shows the view, the panel, the title and the prompt's options as the host has them now.
  void Refresh();
  // Appends text to the command line's output.
  void Write(const std::wstring& text);
  // The command line's reader: true with the line the user entered; false when the window was
  // closed, or when the user acted on the panel or chose a menu command while a command waited
  // (the host then cancels the command and carries out the action).
  bool Read(const std::wstring& prompt, std::wstring& line);

  TsPanelDock* Dock() const { return m_dock; }
  TsModelView* View() const { return m_view; }
  QLineEdit* Input() const { return m_input; }
  // The buttons of the options the waiting prompt offers, in its order.
  std::vector<QWidget*> OptionButtons() const;

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeMenus();
  void Acted();
  // Runs a command as the menus do: at once when none runs, else after cancelling the one that
  // waits.
  void RunFromMenu(const std::wstring& command);
  // A file chosen in a dialog, as a quoted answer, and the command run with it.
  void RunWithFile(const wchar_t* command, const QString& caption, bool save);
  // Answers the waiting prompt with `line`, showing `shown` after the prompt.
  void Answer(const std::wstring& line, const std::wstring& shown);
  // The objects picked in the view: the answer of a prompt that takes objects, else the
  // document's selection.
  void Picked(const std::vector<const CTarsaObject*>& objects, bool add);
  void ShowOptions();
  // Tab: completes the last word of the line with a command or option name.
  void Complete();
  // Up and Down: an earlier or later line of this session.
  void Recall(int step);

  TsModelView* m_view = nullptr;
  QPlainTextEdit* m_output = nullptr;
  QLabel* m_prompt = nullptr;
  QWidget* m_options = nullptr;
  QHBoxLayout* m_options_layout = nullptr;
  QLineEdit* m_input = nullptr;
  TsPanelDock* m_dock = nullptr;
  std::wstring m_prompt_text;
  std::optional<std::pair<std::wstring, std::wstring>> m_answer;  // the line and how it shows
  std::vector<std::wstring> m_history;
  size_t m_history_at = 0;
  bool m_reading = false;
  bool m_closed = false;
  bool m_interrupted = false;
};
