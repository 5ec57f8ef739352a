// The host's list panels as the host program shows them on its command line, in place of a
// window: a panel's items in their order with the selected ones marked, and which of its buttons
// are enabled. The program shows a panel when it opens and again whenever what it shows changes,
// when the host is idle (after the panels' deferred rebuilds), so that a transcript follows the
// panel as a person would see it.
#pragma once

#include <string>
#include <vector>

class CListCtrl;
class CTsNamedDocObjectManagerDlg;

// A panel button by the name the program gives it.
struct TsPanelButton {
  int control_id;
  const wchar_t* name;
};
// The buttons a list panel may have, in the order they are laid out.
const std::vector<TsPanelButton>& TsPanelButtons();

// The panel's state as lines ending in "\n": "CAPTION panel:", one line per item ("  * NAME"
// when selected, else "    NAME"; " (matches)" after the name of an item that carries the
// state image of a stance the model matches; "  (no items)" for none), then "  Enabled: " and
// the names of the enabled buttons ("none" when no button is).
std::wstring TsPanelText(CTsNamedDocObjectManagerDlg& panel);

// The status bar's text of the stances the model matches, the panel's marked items in list
// order: "Matches: Exploded", "Matches: A, B", or "Matches no stance" when none is marked.
std::wstring TsMatchesText(const CListCtrl& list);
// True when the item carries the mark of a stance the model matches (state image 1).
bool TsItemMatches(const CListCtrl& list, int item);

// Prints the panel's state on the command line now.
void TsShowPanel(CTsNamedDocObjectManagerDlg& panel);
// Carries out the host's idle work (the panels' deferred rebuilds included), then prints the
// state of every open list panel that differs from what was printed of it last, and "The CAPTION
// panel is closed." for each one printed before that has closed since. The program calls it
// whenever it waits for the user.
void TsShowPanelChanges();
