// Popup menus of the platform: a list of string items and separators, with one default item.
// CreatePopupMenu makes one; its maker destroys it (DestroyMenu, or the CMenu it is attached
// to). TrackPopupMenu shows the menu and returns the user's choice, which comes from the user
// answers (host/platform/user_answers.h).
#pragma once

#include <string>
#include <vector>

#include "host/platform/window.h"

struct HMENU__;
typedef HMENU__* HMENU;

constexpr UINT MF_STRING = 0x0000;
constexpr UINT MF_SEPARATOR = 0x0800;
constexpr UINT TPM_RIGHTBUTTON = 0x0002;
constexpr UINT TPM_RETURNCMD = 0x0100;

// One entry of a menu: a separator has id 0 and no text.
struct TsMenuItem {
  UINT id = 0;
  std::wstring text;
  bool separator = false;
};

// An empty popup menu.
HMENU CreatePopupMenu();
// False when the menu does not exist.
bool DestroyMenu(HMENU menu);
bool IsMenu(HMENU menu);
// Appends a string item (MF_STRING) or a separator (MF_SEPARATOR): false when the menu does not
// exist.
bool AppendMenuW(HMENU menu, UINT flags, UINT id, const wchar_t* text);
// Makes the item with that id the default (by_position false) or the item at that position:
// false when the menu does not exist.
bool SetMenuDefaultItem(HMENU menu, UINT item, UINT by_position);
// The default item's id, or -1 when there is none.
int GetMenuDefaultItem(HMENU menu);
// The menu's entries in order; empty for a menu that does not exist.
std::vector<TsMenuItem> TsMenuItems(HMENU menu);

class CMenu {
 public:
  CMenu() = default;
  CMenu(const CMenu&) = delete;
  CMenu& operator=(const CMenu&) = delete;
  // Destroys the menu it holds.
  ~CMenu() { DestroyMenu(); }

  bool CreatePopupMenu();
  bool DestroyMenu();
  HMENU GetSafeHmenu() const { return m_hMenu; }

  // Shows the menu at x, y (screen coordinates) for `owner`. With TPM_RETURNCMD: the chosen
  // item's id, or 0 when the menu was dismissed; without: whether an item was chosen.
  int TrackPopupMenu(UINT flags, int x, int y, CWnd* owner);

 private:
  HMENU m_hMenu = nullptr;
};
