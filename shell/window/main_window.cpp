#include "shell/window/main_window.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>

#include "host/tarsa/standin/tarsa_standin.h"
#include "shell/panel_text.h"
#include "shell/session.h"
#include "shell/window/panel_dock.h"
#include "shell/window/top_view_widget.h"

TsMainWindow::TsMainWindow() {
  auto* splitter = new QSplitter(Qt::Vertical, this);
  m_view = new TsTopViewWidget(splitter);
  auto* bottom = new QWidget(splitter);
  auto* layout = new QVBoxLayout(bottom);
  layout->setContentsMargins(0, 0, 0, 0);
  m_output = new QPlainTextEdit(bottom);
  m_output->setReadOnly(true);
  m_output->setFont(QFont("monospace"));
  layout->addWidget(m_output);
  auto* line = new QHBoxLayout();
  m_prompt = new QLabel(QStringLiteral("Command:"), bottom);
  m_input = new QLineEdit(bottom);
  line->addWidget(m_prompt);
  line->addWidget(m_input, 1);
  layout->addLayout(line);
  splitter->addWidget(m_view);
  splitter->addWidget(bottom);
  splitter->setStretchFactor(0, 3);
  splitter->setStretchFactor(1, 1);
  setCentralWidget(splitter);
  m_dock = new TsPanelDock(this, [this] { Acted(); });
  addDockWidget(Qt::RightDockWidgetArea, m_dock);
  connect(m_input, &QLineEdit::returnPressed, this, [this] { m_entered = true; });
  resize(1000, 700);
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
  TsShowPanelChanges();
  Refresh();
  m_prompt->setText(QString::fromStdWString(prompt));
  m_entered = false;
  m_interrupted = false;
  while (!m_closed && !m_entered && !m_interrupted) {
    QEventLoop().processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
  }
  if (m_closed || m_interrupted) return false;
  line = m_input->text().toStdWString();
  m_input->clear();
  Write(prompt + L" " + line + L"\n");
  return true;
}

void TsMainWindow::Acted() {
  // A command that waited for input is cancelled before the host carries out the action.
  if (CTarsaStandIn::CommandLine().RunningCommand() != nullptr) m_interrupted = true;
  TsShowPanelChanges();
  Refresh();
}

void TsMainWindow::closeEvent(QCloseEvent* event) {
  m_closed = true;
  event->accept();
}
