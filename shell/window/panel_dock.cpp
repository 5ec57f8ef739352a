#include "shell/window/panel_dock.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QToolButton>
#include <functional>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_named_object_panel.h"
#include "host/tarsa/tarsa_tool_button.h"
#include "shell/panel_text.h"
#include "shell/window/svg_icon.h"

namespace {

using Dlg = CTsNamedDocObjectManagerDlg;

// Keeps Refresh's own changes of the list from being taken for the user's.
class RefreshScope {
 public:
  explicit RefreshScope(bool& refreshing) : m_refreshing(refreshing) { m_refreshing = true; }
  ~RefreshScope() { m_refreshing = false; }
  RefreshScope(const RefreshScope&) = delete;
  RefreshScope& operator=(const RefreshScope&) = delete;

 private:
  bool& m_refreshing;
};

// The host's own pictures of the standard buttons, drawn in the colours of the panels' icons:
// grey, blue under the pointer, light grey when disabled.
const char* StandardDrawing(int control_id) {
  switch (control_id) {
    case Dlg::save_button:
      return R"(<svg viewBox="0 0 16 16"><rect x="2.5" y="2.5" width="11" height="11" fill="none"
        stroke="C"/><rect x="5" y="2.5" width="6" height="4" fill="C"/><rect x="4.5" y="9.5"
        width="7" height="4" fill="C" fill-opacity="0.35" stroke="C"/></svg>)";
    case Dlg::restore_button:
      return R"(<svg viewBox="0 0 16 16"><path d="M4 6 H10.5 A3.5 3.5 0 0 1 10.5 13 H6"
        fill="none" stroke="C" stroke-width="1.6"/><path d="M1.5 6 L5.5 2.5 V9.5 Z" fill="C"/>
        </svg>)";
    case Dlg::delete_button:
      return R"(<svg viewBox="0 0 16 16"><path d="M3 3 L13 13 M13 3 L3 13" fill="none"
        stroke="C" stroke-width="2"/></svg>)";
    case Dlg::rename_button:
      return R"(<svg viewBox="0 0 16 16"><rect x="1.5" y="4.5" width="13" height="7" fill="none"
        stroke="C"/><rect x="3" y="6.5" width="4" height="3" fill="C"/><path d="M9 2 V14 M7.5 2
        H10.5 M7.5 14 H10.5" fill="none" stroke="C" stroke-width="1.2"/></svg>)";
    case Dlg::help_button:
      return R"(<svg viewBox="0 0 16 16"><path d="M5 5.5 A3 3 0 1 1 8 8.5 V10.5" fill="none"
        stroke="C" stroke-width="1.8"/><circle cx="8" cy="13.3" r="1.2" fill="C"/></svg>)";
    default:
      return nullptr;
  }
}

QIcon StandardIcon(int control_id, int size) {
  const char* drawing = StandardDrawing(control_id);
  if (drawing == nullptr) return QIcon();
  QIcon icon;
  const std::pair<QIcon::Mode, const char*> looks[] = {
      {QIcon::Normal, "#6E6E6E"}, {QIcon::Active, "#2B7BD6"}, {QIcon::Disabled, "#C4C4C4"}};
  for (const auto& look : looks) {
    const QByteArray svg =
        QByteArray(drawing).replace("\"C\"", QByteArray("\"") + look.second + "\"");
    icon.addPixmap(TsPaintSvg(svg.constData(), size), look.first);
  }
  return icon;
}

// A tool button's icon with its three looks, from the host's button.
QIcon ToolIcon(const CTsDialogToolButton& button) {
  QIcon icon;
  const std::pair<QIcon::Mode, HICON> looks[] = {{QIcon::Normal, button.NormalIcon()},
                                                 {QIcon::Active, button.HighlightedIcon()},
                                                 {QIcon::Disabled, button.DisabledIcon()}};
  for (const auto& look : looks) {
    const QIcon one = TsIconOf(look.second);
    if (one.isNull()) return QIcon();
    icon.addPixmap(one.pixmap(one.availableSizes().value(0)), look.first);
  }
  return icon;
}

QRect RectOf(const RECT& r) { return QRect(r.left, r.top, r.right - r.left, r.bottom - r.top); }

// The editor of a list item's label: Enter or leaving it ends the edit, Escape cancels it.
class LabelEditor : public QLineEdit {
 public:
  enum class Outcome { editing, entered, cancelled };

  LabelEditor(QWidget* parent, std::function<void()> ended)
      : QLineEdit(parent), m_ended(std::move(ended)) {
    setObjectName("label_editor");
    connect(this, &QLineEdit::returnPressed, this, [this] { End(Outcome::entered); });
  }
  Outcome Result() const { return m_outcome; }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Escape) {
      End(Outcome::cancelled);
      return;
    }
    QLineEdit::keyPressEvent(event);
    // Enter ends the edit here: passed on, the list would take it for a restore.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) event->accept();
  }
  void focusOutEvent(QFocusEvent* event) override {
    QLineEdit::focusOutEvent(event);
    End(Outcome::entered);
  }

 private:
  void End(Outcome outcome) {
    if (m_outcome != Outcome::editing) return;
    m_outcome = outcome;
    m_ended();
  }

  std::function<void()> m_ended;
  Outcome m_outcome = Outcome::editing;
};

}  // namespace

TsPanelDock::TsPanelDock(QWidget* parent, std::function<void(std::function<void()>)> act)
    : QDockWidget(parent), m_act(std::move(act)) {
  setObjectName("panel");
  setFeatures(DockWidgetClosable | DockWidgetMovable | DockWidgetFloatable);
  m_area = new QWidget(this);
  m_area->setMinimumSize(40, 120);
  m_area->installEventFilter(this);
  m_list = new QListWidget(m_area);
  m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);  // the host edits labels
  m_list->setContextMenuPolicy(Qt::CustomContextMenu);
  // A small mark beside the stances the model matches; the others get a blank of its size, so
  // that every name starts at the same place.
  constexpr int kMark = 12;
  m_list->setIconSize(QSize(kMark, kMark));
  m_match_mark = QIcon(TsPaintSvg(R"(<svg viewBox="0 0 16 16"><path d="M2.5 8.5 L6.5 12.5 L13.5 3.5"
    fill="none" stroke="#2E8B3E" stroke-width="2.4"/></svg>)",
                                  kMark));
  QPixmap blank(kMark, kMark);
  blank.fill(Qt::transparent);
  m_no_mark = QIcon(blank);
  m_list->installEventFilter(this);
  for (const TsPanelButton& button : TsPanelButtons()) {
    auto* tool = new QToolButton(m_area);
    tool->setAutoRaise(true);
    tool->setToolTip(QString::fromWCharArray(button.name));
    tool->setIcon(StandardIcon(button.control_id, 32));
    if (tool->icon().isNull()) tool->setText(QString::fromWCharArray(button.name).left(1));
    m_buttons[button.control_id] = tool;
    const int control_id = button.control_id;
    connect(tool, &QToolButton::clicked, this, [this, control_id] {
      Act([control_id](Dlg& panel) { CTarsaStandIn::Click(panel, control_id); });
    });
  }
  setWidget(m_area);
  connect(m_list, &QListWidget::itemSelectionChanged, this, [this] { Selected(); });
  connect(m_list, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
    const int row = m_list->row(item);
    Act([row](Dlg& panel) { CTarsaStandIn::DoubleClick(panel, row); });
  });
  connect(m_list, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
    const QPoint global = m_list->viewport()->mapToGlobal(at);
    Act([global](Dlg& panel) { CTarsaStandIn::ContextMenu(panel, POINT{global.x(), global.y()}); });
  });
  hide();
}

QToolButton* TsPanelDock::Button(int control_id) const {
  const auto found = m_buttons.find(control_id);
  return found == m_buttons.end() ? nullptr : found->second;
}

Dlg* TsPanelDock::Panel() const {
  const std::vector<CTsNamedDocObjectManagerDlg*> panels = CTarsaStandIn::Panels();
  return panels.empty() ? nullptr : panels.front();
}

void TsPanelDock::Act(std::function<void(CTsNamedDocObjectManagerDlg&)> action) {
  m_act([this, action] {
    if (CTsNamedDocObjectManagerDlg* panel = Panel()) action(*panel);
  });
}

void TsPanelDock::Selected() {
  if (m_refreshing) return;
  std::vector<int> items;
  for (int i = 0; i < m_list->count(); ++i) {
    if (m_list->item(i)->isSelected()) items.push_back(i);
  }
  if (CTsNamedDocObjectManagerDlg* panel = Panel()) CTarsaStandIn::SelectItems(*panel, items);
  CTarsaStandIn::RunIdleWork();
  Refresh();
  if (m_selection_changed) m_selection_changed();
}

void TsPanelDock::closeEvent(QCloseEvent* event) {
  // Like any action on the panel, closing waits for a command that uses it to be cancelled.
  if (CTsNamedDocObjectManagerDlg* panel = Panel()) {
    const ZK_UUID tab_id = panel->TabId();
    m_act([tab_id] { TarsaUiCloseDockbarTab(tab_id); });
  }
  event->accept();
}

bool TsPanelDock::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_area && event->type() == QEvent::Resize) {
    if (CTsNamedDocObjectManagerDlg* panel = Panel()) Arrange(*panel);
  }
  // The keys of a list panel: F2 renames, Delete deletes, Enter restores, as their buttons do.
  if (watched == m_list && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    const int control = key == Qt::Key_F2       ? Dlg::rename_button
                        : key == Qt::Key_Delete ? Dlg::delete_button
                                                : 0;
    if (control != 0) {
      Act([control](Dlg& panel) { CTarsaStandIn::Click(panel, control); });
      return true;
    }
    if ((key == Qt::Key_Return || key == Qt::Key_Enter) && m_list->currentItem() != nullptr) {
      const int row = m_list->currentRow();
      Act([row](Dlg& panel) { CTarsaStandIn::DoubleClick(panel, row); });
      return true;
    }
  }
  return QDockWidget::eventFilter(watched, event);
}

void TsPanelDock::Arrange(CTsNamedDocObjectManagerDlg& panel) {
  RECT client;
  panel.GetClientRect(&client);
  if (client.right != m_area->width() || client.bottom != m_area->height()) {
    CTarsaStandIn::Resize(panel, m_area->width(), m_area->height());
  }
  if (const CWnd* list = TsWindowObject(panel.GetDlgItem(Dlg::list_control))) {
    m_list->setGeometry(RectOf(list->WindowRect()));
  }
  for (const auto& entry : m_buttons) {
    const CWnd* control = TsWindowObject(panel.GetDlgItem(entry.first));
    entry.second->setVisible(control != nullptr);
    if (control != nullptr) entry.second->setGeometry(RectOf(control->WindowRect()));
  }
}

void TsPanelDock::Decorate(CTsNamedDocObjectManagerDlg& panel) {
  if (m_decorated == panel.GetSafeHwnd()) return;
  m_decorated = panel.GetSafeHwnd();
  setWindowIcon(TsIconOf(panel.Icon(16, 16)));
  for (const auto& entry : m_buttons) {
    const auto* tool =
        dynamic_cast<const CTsDialogToolButton*>(TsWindowObject(panel.GetDlgItem(entry.first)));
    if (tool == nullptr) continue;
    entry.second->setToolTip(QString::fromStdWString(tool->ToolTip()));
    const QIcon icon = ToolIcon(*tool);
    if (!icon.isNull()) entry.second->setIcon(icon);
  }
}

void TsPanelDock::Refresh() {
  CTsNamedDocObjectManagerDlg* panel = Panel();
  if (panel == nullptr) {
    hide();
    return;
  }
  RefreshScope scope(m_refreshing);
  setWindowTitle(QString::fromWCharArray(panel->Caption()));
  Decorate(*panel);
  const CListCtrl& list = panel->List();
  // Items are changed in place, so that a click being handled keeps its item.
  while (m_list->count() > list.GetItemCount()) delete m_list->takeItem(m_list->count() - 1);
  for (int i = 0; i < list.GetItemCount(); ++i) {
    const QString text = QString::fromStdWString(list.GetItemText(i));
    QListWidgetItem* item = i < m_list->count() ? m_list->item(i) : new QListWidgetItem(m_list);
    if (item->text() != text) item->setText(text);
    item->setSelected(list.GetItemState(i, LVIS_SELECTED) != 0);
    // The mark of a stance the model matches, beside the name.
    const bool matches = TsItemMatches(list, i);
    item->setIcon(matches ? m_match_mark : m_no_mark);
    item->setToolTip(matches ? QStringLiteral("The model matches this stance") : QString());
  }
  for (const auto& entry : m_buttons) {
    const HWND control = panel->GetDlgItem(entry.first);
    entry.second->setEnabled(control != nullptr && IsWindowEnabled(control) &&
                             panel->IsWindowEnabled());
  }
  Arrange(*panel);
  show();
}

bool TsPanelDock::EditLabel(int item, const std::wstring& current, std::wstring& text) {
  QListWidgetItem* shown = m_list->item(item);
  if (shown == nullptr) return false;
  m_list->scrollToItem(shown);
  // The editor lives on the heap and ends the wait when it goes: the dock may go while the user
  // edits.
  QEventLoop wait;
  QPointer<LabelEditor> editor = new LabelEditor(m_list->viewport(), [&wait] { wait.quit(); });
  connect(editor, &QObject::destroyed, &wait, &QEventLoop::quit);
  editor->setText(QString::fromStdWString(current));
  editor->selectAll();
  editor->setGeometry(m_list->visualItemRect(shown));
  editor->show();
  editor->setFocus();
  wait.exec();
  if (editor == nullptr) return false;
  const bool entered = editor->Result() == LabelEditor::Outcome::entered;
  if (entered) text = editor->text().toStdWString();
  editor->hide();
  editor->deleteLater();
  return entered;
}
