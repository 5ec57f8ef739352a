#include "shell/window/main_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QEventLoop>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>
#include <cwctype>

#include "host/tarsa/standin/tarsa_standin.h"
#include "shell/completion.h"
#include "shell/session.h"
#include "shell/window/model_view.h"
#include "shell/window/panel_dock.h"

namespace {

CTarsaCommandLine& CommandLine() { return CTarsaStandIn::CommandLine(); }

// A text as one answer of the command line: in double quotes, each double quote in it doubled.
std::wstring Quoted(const std::wstring& text) {
  std::wstring quoted = L"\"";
  for (const wchar_t c : text) quoted += c == L'"' ? std::wstring(L"\"\"") : std::wstring(1, c);
  return quoted + L"\"";
}

}  // namespace

TsMainWindow::TsMainWindow() {
  auto* splitter = new QSplitter(Qt::Vertical, this);
  m_view = new TsModelView(splitter);
  m_view->SetPicked(
      [this](const std::vector<const CTarsaObject*>& objects, bool add) { Picked(objects, add); });
  auto* bottom = new QWidget(splitter);
  auto* layout = new QVBoxLayout(bottom);
  layout->setContentsMargins(0, 0, 0, 0);
  m_output = new QPlainTextEdit(bottom);
  m_output->setReadOnly(true);
  m_output->setFont(QFont("monospace"));
  layout->addWidget(m_output);
  auto* line = new QHBoxLayout();
  m_prompt = new QLabel(QStringLiteral("Command:"), bottom);
  m_options = new QWidget(bottom);
  m_options_layout = new QHBoxLayout(m_options);
  m_options_layout->setContentsMargins(0, 0, 0, 0);
  m_options_layout->setSpacing(2);
  m_input = new QLineEdit(bottom);
  m_input->installEventFilter(this);
  line->addWidget(m_prompt);
  line->addWidget(m_options);
  line->addWidget(m_input, 1);
  layout->addLayout(line);
  splitter->addWidget(m_view);
  splitter->addWidget(bottom);
  splitter->setStretchFactor(0, 3);
  splitter->setStretchFactor(1, 1);
  setCentralWidget(splitter);
  m_dock = new TsPanelDock(this, [this] { Acted(); });
  addDockWidget(Qt::RightDockWidgetArea, m_dock);
  resizeDocks({m_dock}, {240}, Qt::Horizontal);
  connect(m_input, &QLineEdit::returnPressed, this, [this] {
    const std::wstring typed = m_input->text().toStdWString();
    m_input->clear();
    if (!typed.empty() && (m_history.empty() || m_history.back() != typed)) {
      m_history.push_back(typed);
    }
    m_history_at = m_history.size();
    Answer(typed, typed);
  });
  MakeMenus();
  resize(1000, 700);
}

void TsMainWindow::MakeMenus() {
  const auto command = [this](QMenu* menu, const QString& text, const wchar_t* name,
                              const QKeySequence& keys = QKeySequence()) {
    const std::wstring macro = name;
    menu->addAction(text, keys, this, [this, macro] { RunFromMenu(macro); });
  };
  QMenu* file = menuBar()->addMenu("&File");
  command(file, "&New", L"_New", QKeySequence::New);
  file->addAction("&Open...", QKeySequence::Open, this,
                  [this] { RunWithFile(L"_Open", "Open", false); });
  command(file, "&Save", L"_Save", QKeySequence::Save);
  file->addAction("Save &As...", QKeySequence::SaveAs, this,
                  [this] { RunWithFile(L"_SaveAs", "Save As", true); });
  file->addAction("&Import...", this, [this] { RunWithFile(L"_Import", "Import", false); });
  file->addSeparator();
  command(file, "E&xit", L"_Exit", QKeySequence::Quit);
  QMenu* edit = menuBar()->addMenu("&Edit");
  command(edit, "&Undo", L"_Undo", QKeySequence::Undo);
  command(edit, "&Redo", L"_Redo", QKeySequence::Redo);
  QMenu* view = menuBar()->addMenu("&View");
  const auto direction = [this, view](const QString& text, TsModelView::Direction d, int key) {
    view->addAction(text, QKeySequence(Qt::CTRL | key), this,
                    [this, d] { m_view->SetDirection(d); });
  };
  direction("&Top", TsModelView::Direction::top, Qt::Key_1);
  direction("&Front", TsModelView::Direction::front, Qt::Key_2);
  direction("&Right", TsModelView::Direction::right, Qt::Key_3);
  view->addAction("Zoom to &Fit", QKeySequence(Qt::CTRL | Qt::Key_0), this,
                  [this] { m_view->ZoomToFit(); });
  view->addSeparator();
  command(view, "&Stances Panel", L"_Stance");
}

void TsMainWindow::Refresh() {
  setWindowTitle(QString::fromStdWString(TarsaSession().DisplayName() +
                                         (TarsaSession().IsModified() ? L"*" : L"") + L" - tarsa"));
  m_view->update();
  m_dock->Refresh();
}

void TsMainWindow::Write(const std::wstring& text) {
  m_output->moveCursor(QTextCursor::End);
  m_output->insertPlainText(QString::fromStdWString(text));
  m_output->verticalScrollBar()->setValue(m_output->verticalScrollBar()->maximum());
}

bool TsMainWindow::Read(const std::wstring& prompt, std::wstring& line) {
  // The host is idle while it waits: the panels' pending rebuilds are carried out, and the dock
  // shows the panel (the window shows no panel as text).
  CTarsaStandIn::RunIdleWork();
  Refresh();
  m_prompt_text = prompt;
  m_prompt->setText(QString::fromStdWString(prompt));
  ShowOptions();
  m_answer.reset();
  m_interrupted = false;
  m_reading = true;
  while (!m_closed && !m_answer && !m_interrupted) {
    QEventLoop().processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
  }
  m_reading = false;
  if (m_closed || m_interrupted) return false;
  line = m_answer->first;
  Write(prompt + L" " + m_answer->second + L"\n");
  m_answer.reset();
  return true;
}

void TsMainWindow::Answer(const std::wstring& line, const std::wstring& shown) {
  if (m_reading) m_answer = std::make_pair(line, shown);
}

std::vector<QWidget*> TsMainWindow::OptionButtons() const {
  std::vector<QWidget*> buttons;
  for (int i = 0; i < m_options_layout->count(); ++i) {
    buttons.push_back(m_options_layout->itemAt(i)->widget());
  }
  return buttons;
}

void TsMainWindow::ShowOptions() {
  while (QLayoutItem* item = m_options_layout->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  for (const CTarsaQuestion::Option& option : CommandLine().Question().options) {
    auto* button = new QToolButton(m_options);
    button->setText(QString::fromStdWString(option.shown));
    button->setAutoRaise(true);
    const std::wstring word = option.word, shown = option.shown;
    connect(button, &QToolButton::clicked, this, [this, word, shown] { Answer(word, shown); });
    m_options_layout->addWidget(button);
  }
  m_options->setVisible(m_options_layout->count() > 0);
}

void TsMainWindow::Picked(const std::vector<const CTarsaObject*>& objects, bool add) {
  if (m_reading && CommandLine().Question().objects) {
    if (objects.empty()) return;
    std::wstring ids, names;
    for (const CTarsaObject* object : objects) {
      ids += (ids.empty() ? L"" : L" ") +
             std::wstring(ZK_UuidToString(object->ModelObjectId()).Text());
      const std::wstring name = object->Attributes().m_name.Text();
      names += (names.empty() ? L"" : L", ") + (name.empty() ? std::wstring(L"(unnamed)") : name);
    }
    Answer(ids, names);
    return;
  }
  CTarsaDoc* doc = CommandLine().Document();
  if (doc == nullptr) return;
  if (!add) doc->UnselectAll();
  for (const CTarsaObject* object : objects) object->Select(!(add && object->IsSelected()));
  Refresh();
}

void TsMainWindow::RunFromMenu(const std::wstring& command) {
  if (CommandLine().RunningCommand() == nullptr) {
    Answer(command, command);
    return;
  }
  CommandLine().RunWhenNoCommand([command] { CommandLine().RunScript(command.c_str(), 1); });
  m_interrupted = true;
}

void TsMainWindow::RunWithFile(const wchar_t* command, const QString& caption, bool save) {
  const QString filter = "Models (*.tsm);;All files (*)";
  const QString path = save ? QFileDialog::getSaveFileName(this, caption, QString(), filter)
                            : QFileDialog::getOpenFileName(this, caption, QString(), filter);
  if (path.isEmpty()) return;
  RunFromMenu(std::wstring(command) + L" " + Quoted(path.toStdWString()));
}

void TsMainWindow::Acted() {
  // A command that waited for input is cancelled before the host carries out the action.
  if (CommandLine().RunningCommand() != nullptr) m_interrupted = true;
  CTarsaStandIn::RunIdleWork();
  Refresh();
}

void TsMainWindow::Complete() {
  const std::wstring line = m_input->text().toStdWString();
  const size_t blank = line.find_last_of(L' ');
  const size_t start = blank == std::wstring::npos ? 0 : blank + 1;
  const std::vector<std::wstring> found = TsCompletions(m_prompt_text, line.substr(start));
  if (found.empty()) return;
  // The longest beginning that every completion shares, letter case as the first has it.
  std::wstring common = found.front();
  for (const std::wstring& other : found) {
    size_t n = 0;
    while (n < common.size() && n < other.size() &&
           std::towlower(common[n]) == std::towlower(other[n])) {
      ++n;
    }
    common.resize(n);
  }
  if (found.size() == 1) {
    common += L" ";
  } else {
    std::wstring listed;
    for (const std::wstring& name : found) listed += name + L"  ";
    Write(listed + L"\n");
  }
  m_input->setText(QString::fromStdWString(line.substr(0, start) + common));
}

void TsMainWindow::Recall(int step) {
  if (m_history.empty()) return;
  const long at = static_cast<long>(m_history_at) + step;
  if (at < 0) return;
  m_history_at = std::min(static_cast<size_t>(at), m_history.size());
  m_input->setText(m_history_at < m_history.size()
                       ? QString::fromStdWString(m_history[m_history_at])
                       : QString());
}

bool TsMainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_input && event->type() == QEvent::KeyPress) {
    switch (static_cast<QKeyEvent*>(event)->key()) {
      case Qt::Key_Tab:
        Complete();
        return true;
      case Qt::Key_Up:
        Recall(-1);
        return true;
      case Qt::Key_Down:
        Recall(1);
        return true;
      case Qt::Key_Escape:
        Answer(L"_Escape", L"(cancelled)");
        return true;
      default:
        break;
    }
  }
  return QMainWindow::eventFilter(watched, event);
}

void TsMainWindow::closeEvent(QCloseEvent* event) {
  // Unsaved changes are asked about by the Exit command, which ends the program when allowed.
  if (m_reading && TarsaSession().IsModified()) {
    event->ignore();
    RunFromMenu(L"_Exit");
    return;
  }
  m_closed = true;
  event->accept();
}
