// TsMainWindow: the host program's window. The view of the model fills it; below are the command
// line's output and the line where the user types at the prompt shown beside it; the host's open
// list panel is docked at the right. The window serves as the command line's reader and writer:
// Read() shows the prompt and runs the window's events until the user enters a line, acts on the
// panel while a command waits, or closes the window. Owned by the program while it runs.
#pragma once

#include <QMainWindow>
#include <string>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class TsPanelDock;
class TsTopViewWidget;

class TsMainWindow : public QMainWindow {
 public:
  TsMainWindow();

  // Shows the view, the panel and the title as the host has them now.
  void Refresh();
  // Appends text to the command line's output.
  void Write(const std::wstring& text);
  // The command line's reader: true with the line the user entered; false when the window was
  // closed, or when the user acted on the panel while a command waited (the host then cancels
  // the command and carries out the action).
  bool Read(const std::wstring& prompt, std::wstring& line);

  TsPanelDock* Dock() const { return m_dock; }
  TsTopViewWidget* View() const { return m_view; }
  QLineEdit* Input() const { return m_input; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void Acted();

  TsTopViewWidget* m_view = nullptr;
  QPlainTextEdit* m_output = nullptr;
  QLabel* m_prompt = nullptr;
  QLineEdit* m_input = nullptr;
  TsPanelDock* m_dock = nullptr;
  bool m_closed = false;
  bool m_interrupted = false;
  bool m_entered = false;
};
