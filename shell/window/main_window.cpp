#include "shell/window/main_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QEventLoop>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QStatusBar>
#include <QVBoxLayout>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_named_object_panel.h"
#include "shell/panel_text.h"
#include "shell/session.h"
#include "shell/stance_preview.h"
#include "shell/window/model_view.h"
#include "shell/window/panel_dock.h"
#include "shell/window/window_answers.h"

namespace {

CTarsaCommandLine& CommandLine() { return CTarsaStandIn::CommandLine(); }

// A text as one answer of the command line: in double quotes, each double quote in it doubled.
std::wstring Quoted(const std::wstring& text) {
  std::wstring quoted = L"\"";
  for (const wchar_t c : text) quoted += c == L'"' ? std::wstring(L"\"\"") : std::wstring(1, c);
  return quoted + L"\"";
}

QString Escaped(const std::wstring& text) { return QString::fromStdWString(text).toHtmlEscaped(); }

// The words a prompt offers between " ( " and " )" at its end, and where that list starts.
std::vector<std::wstring> OfferedWords(const std::wstring& prompt, size_t& start) {
  std::vector<std::wstring> words;
  start = prompt.rfind(L" ( ");
  const size_t close = prompt.rfind(L" )");
  if (start == std::wstring::npos || close == std::wstring::npos || close < start) {
    start = prompt.size();
    return words;
  }
  size_t at = start + 3;
  while (at < close) {
    size_t end = prompt.find(L' ', at);
    if (end == std::wstring::npos || end > close) end = close;
    if (end > at) words.push_back(prompt.substr(at, end - at));
    at = end + 1;
  }
  return words;
}

}  // namespace

TsMainWindow::TsMainWindow()
    : m_user({[] { QEventLoop().processEvents(QEventLoop::WaitForMoreEvents); },
              [this](const std::wstring& prompt) { ShowPrompt(prompt); },
              [this](const std::wstring& text) { Write(text); }}) {
  auto* splitter = new QSplitter(Qt::Vertical, this);
  m_view = new TsModelView(splitter);
  m_view->SetPicked([this](const std::vector<const CTarsaObject*>& objects, bool add) {
    std::vector<ZK_UUID> ids;
    for (const CTarsaObject* object : objects) ids.push_back(object->ModelObjectId());
    m_user.Pick(ids, add);
  });
  m_view->SetRightClicked([this] { m_user.EndPicking(); });
  auto* bottom = new QWidget(splitter);
  auto* layout = new QVBoxLayout(bottom);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  m_output = new QPlainTextEdit(bottom);
  m_output->setReadOnly(true);
  m_output->setFont(QFont("monospace"));
  layout->addWidget(m_output, 1);
  // The prompt wraps within the width the window has: however many options it offers, it never
  // widens the window.
  m_prompt = new QLabel(QStringLiteral("Command:"), bottom);
  m_prompt->setWordWrap(true);
  m_prompt->setTextFormat(Qt::RichText);
  m_prompt->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
  m_prompt->setTextInteractionFlags(Qt::LinksAccessibleByMouse);
  connect(m_prompt, &QLabel::linkActivated, this,
          [this](const QString& link) { ChooseOption(static_cast<size_t>(link.toULongLong())); });
  layout->addWidget(m_prompt);
  m_input = new QLineEdit(bottom);
  m_input->installEventFilter(this);
  layout->addWidget(m_input);
  splitter->addWidget(m_view);
  splitter->addWidget(bottom);
  splitter->setStretchFactor(0, 3);
  splitter->setStretchFactor(1, 1);
  setCentralWidget(splitter);
  m_dock = new TsPanelDock(this,
                           [this](std::function<void()> action) { m_user.Act(std::move(action)); });
  m_dock->SetSelectionChanged([this] { UpdatePreview(); });
  m_answers = std::make_unique<TsWindowAnswers>(this, *m_dock);
  addDockWidget(Qt::RightDockWidgetArea, m_dock);
  resizeDocks({m_dock}, {240}, Qt::Horizontal);
  connect(m_input, &QLineEdit::returnPressed, this, [this] {
    const std::wstring typed = m_input->text().toStdWString();
    m_input->clear();
    m_history.Add(typed);
    m_user.Enter(typed);
  });
  MakeMenus();
  resize(1000, 700);
}

TsMainWindow::~TsMainWindow() = default;

void TsMainWindow::MakeMenus() {
  const auto command = [this](QMenu* menu, const QString& text, const wchar_t* name,
                              const QKeySequence& keys = QKeySequence()) {
    const std::wstring macro = name;
    QAction* action = menu->addAction(text, keys, this, [this, macro] { RunFromMenu(macro); });
    action->setShortcutContext(Qt::ApplicationShortcut);
    return action;
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
  command(edit, "&Redo", L"_Redo")
      ->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(QKeySequence::Redo)});
  QMenu* view = menuBar()->addMenu("&View");
  const auto standard = [this, view](const QString& text, TsStandardView side, int key) {
    view->addAction(text, QKeySequence(Qt::CTRL | key), this,
                    [this, side] { m_view->SetStandardView(side); })
        ->setShortcutContext(Qt::ApplicationShortcut);
  };
  standard("&Top", TsStandardView::top, Qt::Key_1);
  standard("&Front", TsStandardView::front, Qt::Key_2);
  standard("&Right", TsStandardView::right, Qt::Key_3);
  standard("&Iso", TsStandardView::iso, Qt::Key_4);
  view->addAction("Zoom to &Fit", QKeySequence(Qt::CTRL | Qt::Key_0), this,
                  [this] { m_view->ZoomToFit(); })
      ->setShortcutContext(Qt::ApplicationShortcut);
  view->addSeparator();
  QAction* perspective = view->addAction("&Perspective", QKeySequence(Qt::CTRL | Qt::Key_5));
  perspective->setShortcutContext(Qt::ApplicationShortcut);
  perspective->setCheckable(true);
  connect(perspective, &QAction::toggled, this, [this](bool on) {
    m_view->SetProjection(on ? TsProjection::perspective : TsProjection::orthographic);
  });
  QAction* animate = view->addAction("&Animate");
  animate->setCheckable(true);
  animate->setChecked(m_view->Animate());
  connect(animate, &QAction::toggled, this, [this](bool on) { m_view->SetAnimate(on); });
  view->addSeparator();
  command(view, "&Stances Panel", L"_Stance");
}

void TsMainWindow::Refresh() {
  setWindowTitle(QString::fromStdWString(TarsaSession().DisplayName() +
                                         (TarsaSession().IsModified() ? L"*" : L"") + L" - tarsa"));
  m_view->update();
  m_dock->Refresh();
  UpdatePreview();
  // Which stances the model matches, as the open panel marks them.
  const std::vector<CTsNamedDocObjectManagerDlg*> panels = CTarsaStandIn::Panels();
  statusBar()->showMessage(
      panels.empty() ? QString() : QString::fromStdWString(TsMatchesText(panels.front()->List())));
}

void TsMainWindow::UpdatePreview() {
  const std::wstring stance = TsSelectedStance();
  m_view->SetPreview(stance.empty() ? std::vector<TsPreviewMove>() : TsStanceMoves(stance));
}

void TsMainWindow::Idle() {
  CTarsaStandIn::RunIdleWork();
  Refresh();
}

bool TsMainWindow::ReadLine(const std::wstring& prompt, std::wstring& line) {
  return m_user.Read(prompt, line);
}

void TsMainWindow::Write(const std::wstring& text) {
  m_output->moveCursor(QTextCursor::End);
  m_output->insertPlainText(QString::fromStdWString(text));
  m_output->verticalScrollBar()->setValue(m_output->verticalScrollBar()->maximum());
}

IUserAnswers& TsMainWindow::Answers() { return *m_answers; }

ITsFrontEnd::UnsavedChanges TsMainWindow::AskAboutChanges(const std::wstring& document) {
  QMessageBox box(QMessageBox::Warning, "tarsa",
                  QString::fromStdWString(L"Save the changes to " + document + L"?"),
                  QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
  box.setDefaultButton(QMessageBox::Save);
  switch (box.exec()) {
    case QMessageBox::Save:
      return UnsavedChanges::save;
    case QMessageBox::Discard:
      return UnsavedChanges::discard;
    default:
      return UnsavedChanges::cancel;
  }
}

void TsMainWindow::ShowPrompt(const std::wstring& prompt) {
  Idle();
  if (prompt == m_shown_prompt) return;
  m_shown_prompt = prompt;
  size_t start = 0;
  const std::vector<std::wstring> offered = OfferedWords(prompt, start);
  m_option_labels.clear();
  m_option_words.clear();
  QString text = Escaped(prompt.substr(0, start));
  if (!offered.empty()) {
    text += " (";
    for (const std::wstring& shown : offered) {
      // An option of the question answers with its English name; a value with itself.
      std::wstring word = shown.substr(0, shown.find(L'='));
      for (const CTarsaQuestion::Option& option : CommandLine().Question().options) {
        if (option.shown == shown) word = option.word;
      }
      text += QString(" <a href=\"%1\">%2</a>").arg(m_option_labels.size()).arg(Escaped(shown));
      m_option_labels.push_back(shown);
      m_option_words.push_back(word);
    }
    text += " )" + Escaped(prompt.substr(prompt.rfind(L" )") + 2));
  }
  m_prompt->setText(text);
}

void TsMainWindow::ChooseOption(size_t index) {
  if (index >= m_option_words.size()) return;
  m_user.Choose(m_shown_prompt, m_option_words[index], m_option_labels[index]);
}

void TsMainWindow::RunFromMenu(const std::wstring& command) {
  m_user.Act([command] { CommandLine().RunScript(command.c_str(), 0); });
}

void TsMainWindow::RunWithFile(const wchar_t* command, const QString& caption, bool save) {
  const QString filter = "Models (*.tsm);;All files (*)";
  const QString path = save ? QFileDialog::getSaveFileName(this, caption, QString(), filter)
                            : QFileDialog::getOpenFileName(this, caption, QString(), filter);
  if (path.isEmpty()) return;
  RunFromMenu(std::wstring(command) + L" " + Quoted(path.toStdWString()));
}

void TsMainWindow::Complete() {
  const TsCompletedLine completed = TsCompleteLine(m_shown_prompt, m_input->text().toStdWString());
  if (!completed.choices.empty()) {
    std::wstring listed;
    for (const std::wstring& name : completed.choices) listed += name + L"  ";
    Write(listed + L"\n");
  }
  m_input->setText(QString::fromStdWString(completed.line));
}

void TsMainWindow::Recall(int step) {
  m_input->setText(QString::fromStdWString(m_history.Recall(step, m_input->text().toStdWString())));
}

bool TsMainWindow::UndoKey(QObject* watched, QKeyEvent* event) {
  const bool undo = event->matches(QKeySequence::Undo);
  const bool redo = event->matches(QKeySequence::Redo) ||
                    (event->key() == Qt::Key_Y && event->modifiers() == Qt::ControlModifier);
  if (!undo && !redo) return false;
  // The field undoes its own typing while it holds text; else the keys are the model's.
  if (watched == m_input && !m_input->text().isEmpty()) return false;
  if (event->type() == QEvent::ShortcutOverride) {
    event->accept();
    return true;
  }
  RunFromMenu(undo ? L"_Undo" : L"_Redo");
  return true;
}

bool TsMainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched != m_input) return QMainWindow::eventFilter(watched, event);
  if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (UndoKey(watched, key)) return true;
  }
  if (event->type() != QEvent::KeyPress) return QMainWindow::eventFilter(watched, event);
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
      m_input->clear();
      m_user.Escape();
      return true;
    default:
      return QMainWindow::eventFilter(watched, event);
  }
}

void TsMainWindow::closeEvent(QCloseEvent* event) {
  // The window closes when the program ends: Exit asks about unsaved changes first.
  event->ignore();
  m_user.Close();
}
