// TsPanelDock: the dock widget that shows the host's open list panel (the Stances panel): its
// caption and tab icon, its one-column list with the host's order and selection, and its buttons
// with their icons, tool tips and enabled state, placed where the panel's own layout puts its
// controls for the dock's size (a narrow dock stacks them). It only mirrors the host panel: what
// the user does (selecting items, clicking a button, double-clicking an item, opening the context
// menu, closing the dock) goes back through the host's entry points, and Refresh() reads the
// panel's state again. It never sorts or stores anything itself. The dock can be moved to another
// side of the window, floated and closed; closing it closes the panel's tab.
// Owned by the main window, which calls Refresh() whenever the host may have changed the panel.
#pragma once

#include <QDockWidget>
#include <QIcon>
#include <functional>
#include <map>
#include <string>

class QListWidget;
class QToolButton;
class CTsNamedDocObjectManagerDlg;

class TsPanelDock : public QDockWidget {
 public:
  // What the host is to do for a user's action (a click, a double click, the context menu,
  // closing) goes to `act`, which runs it when the command line takes it; a change of the
  // selected items goes to the host at once.
  TsPanelDock(QWidget* parent, std::function<void(std::function<void()>)> act);

  // Shows the first open list panel of the host as it is now; hides the dock when none is open.
  void Refresh();
  // Called after the user changed which items are selected.
  void SetSelectionChanged(std::function<void()> changed) {
    m_selection_changed = std::move(changed);
  }

  // Edits the label of list item `item` in place, starting from `current`: true with the text
  // when the user pressed Enter or left the editor, false when the user pressed Escape or there
  // is no such item. Returns when the user has finished.
  bool EditLabel(int item, const std::wstring& current, std::wstring& text);

  QListWidget* List() const { return m_list; }
  // The button for a control id of the panel, or null.
  QToolButton* Button(int control_id) const;

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // The panel the dock shows, or null.
  CTsNamedDocObjectManagerDlg* Panel() const;
  // Hands an action for the panel, if one is still open then, to the window.
  void Act(std::function<void(CTsNamedDocObjectManagerDlg&)> action);
  void Selected();
  // Gives the panel the dock's size, which lays its controls out, and places the widgets where
  // the panel's controls are.
  void Arrange(CTsNamedDocObjectManagerDlg& panel);
  // The tool tips and icons of the panel's own buttons, once for each panel that opens.
  void Decorate(CTsNamedDocObjectManagerDlg& panel);

  std::function<void(std::function<void()>)> m_act;
  std::function<void()> m_selection_changed;
  QWidget* m_area = nullptr;
  QListWidget* m_list = nullptr;
  std::map<int, QToolButton*> m_buttons;
  const void* m_decorated = nullptr;  // the window of the panel decorated last
  bool m_refreshing = false;
  QIcon m_match_mark;
  QIcon m_no_mark;
};
