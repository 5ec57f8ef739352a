#include "shell/window/panel_dock.h"

#include <QGridLayout>
#include <QListWidget>
#include <QPushButton>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_named_object_panel.h"
#include "shell/panel_text.h"

namespace {

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

}  // namespace

TsPanelDock::TsPanelDock(QWidget* parent, std::function<void()> acted)
    : QDockWidget(parent), m_acted(std::move(acted)) {
  setObjectName("panel");
  auto* content = new QWidget(this);
  auto* layout = new QGridLayout(content);
  m_list = new QListWidget(content);
  m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  m_list->setContextMenuPolicy(Qt::CustomContextMenu);
  layout->addWidget(m_list, 0, 0, 1, 4);
  int index = 0;
  for (const TsPanelButton& button : TsPanelButtons()) {
    auto* push = new QPushButton(QString::fromWCharArray(button.name), content);
    layout->addWidget(push, 1 + index / 4, index % 4);
    ++index;
    m_buttons[button.control_id] = push;
    const int control_id = button.control_id;
    connect(push, &QPushButton::clicked, this, [this, control_id] {
      if (CTsNamedDocObjectManagerDlg* panel = Panel()) CTarsaStandIn::Click(*panel, control_id);
      m_acted();
    });
  }
  setWidget(content);
  connect(m_list, &QListWidget::itemSelectionChanged, this, [this] { Selected(); });
  connect(m_list, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
    if (CTsNamedDocObjectManagerDlg* panel = Panel()) {
      CTarsaStandIn::DoubleClick(*panel, m_list->row(item));
    }
    m_acted();
  });
  connect(m_list, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
    if (CTsNamedDocObjectManagerDlg* panel = Panel()) {
      const QPoint global = m_list->mapToGlobal(at);
      CTarsaStandIn::ContextMenu(*panel, POINT{global.x(), global.y()});
    }
    m_acted();
  });
  hide();
}

QPushButton* TsPanelDock::Button(int control_id) const {
  const auto found = m_buttons.find(control_id);
  return found == m_buttons.end() ? nullptr : found->second;
}

CTsNamedDocObjectManagerDlg* TsPanelDock::Panel() const {
  const std::vector<CTsNamedDocObjectManagerDlg*> panels = CTarsaStandIn::Panels();
  return panels.empty() ? nullptr : panels.front();
}

void TsPanelDock::Selected() {
  CTsNamedDocObjectManagerDlg* panel = Panel();
  if (m_refreshing || panel == nullptr) return;
  std::vector<int> items;
  for (int i = 0; i < m_list->count(); ++i) {
    if (m_list->item(i)->isSelected()) items.push_back(i);
  }
  CTarsaStandIn::SelectItems(*panel, items);
  m_acted();
}

void TsPanelDock::Refresh() {
  CTsNamedDocObjectManagerDlg* panel = Panel();
  if (panel == nullptr) {
    hide();
    return;
  }
  RefreshScope scope(m_refreshing);
  setWindowTitle(QString::fromWCharArray(panel->Caption()));
  const CListCtrl& list = panel->List();
  // Items are changed in place, so that a click being handled keeps its item.
  while (m_list->count() > list.GetItemCount()) delete m_list->takeItem(m_list->count() - 1);
  for (int i = 0; i < list.GetItemCount(); ++i) {
    const QString text = QString::fromStdWString(list.GetItemText(i));
    QListWidgetItem* item = i < m_list->count() ? m_list->item(i) : new QListWidgetItem(m_list);
    if (item->text() != text) item->setText(text);
    item->setSelected(list.GetItemState(i, LVIS_SELECTED) != 0);
  }
  for (const auto& entry : m_buttons) {
    const HWND control = panel->GetDlgItem(entry.first);
    entry.second->setVisible(control != nullptr);
    entry.second->setEnabled(control != nullptr && IsWindowEnabled(control) &&
                             panel->IsWindowEnabled());
  }
  show();
}
