// TsPanelDock: the dock widget that shows the host's open list panel (the Stances panel): its
// caption, its one-column list with the host's order and selection, and its buttons with their
// enabled state. It only mirrors the host panel: what the user does (selecting items, clicking a
// button, double-clicking an item, opening the context menu) goes back through the host's entry
// points, and Refresh() reads the panel's state again. It never sorts or stores anything itself.
// Owned by the main window, which calls Refresh() whenever the host may have changed the panel.
#pragma once

#include <QDockWidget>
#include <functional>
#include <map>

class QListWidget;
class QPushButton;
class CTsNamedDocObjectManagerDlg;

class TsPanelDock : public QDockWidget {
 public:
  // `acted` is called after each action of the user has been handed to the host.
  TsPanelDock(QWidget* parent, std::function<void()> acted);

  // Shows the first open list panel of the host as it is now; hides the dock when none is open.
  void Refresh();

  QListWidget* List() const { return m_list; }
  // The button for a control id of the panel, or null.
  QPushButton* Button(int control_id) const;

 private:
  // The panel the dock shows, or null.
  CTsNamedDocObjectManagerDlg* Panel() const;
  void Selected();

  std::function<void()> m_acted;
  QListWidget* m_list = nullptr;
  std::map<int, QPushButton*> m_buttons;
  bool m_refreshing = false;
};
