#include "host/platform/menu.h"

#include <map>
#include <memory>

#include "host/platform/user_answers.h"

namespace {

struct Menu {
  std::vector<TsMenuItem> items;
  int default_item = -1;
};

std::map<HMENU, std::unique_ptr<Menu>>& Menus() {
  static std::map<HMENU, std::unique_ptr<Menu>> menus;
  return menus;
}

Menu* Find(HMENU menu) {
  const auto found = Menus().find(menu);
  return found == Menus().end() ? nullptr : found->second.get();
}

}  // namespace

HMENU CreatePopupMenu() {
  auto menu = std::make_unique<Menu>();
  const HMENU handle = reinterpret_cast<HMENU>(menu.get());
  Menus()[handle] = std::move(menu);
  return handle;
}

bool DestroyMenu(HMENU menu) { return Menus().erase(menu) != 0; }

bool IsMenu(HMENU menu) { return Find(menu) != nullptr; }

bool AppendMenuW(HMENU menu, UINT flags, UINT id, const wchar_t* text) {
  Menu* m = Find(menu);
  if (m == nullptr) return false;
  TsMenuItem item;
  item.separator = (flags & MF_SEPARATOR) != 0;
  if (!item.separator) {
    item.id = id;
    item.text = text ? text : L"";
  }
  m->items.push_back(item);
  return true;
}

bool SetMenuDefaultItem(HMENU menu, UINT item, UINT by_position) {
  Menu* m = Find(menu);
  if (m == nullptr) return false;
  if (by_position) {
    m->default_item = item < m->items.size() && !m->items[item].separator
                          ? static_cast<int>(m->items[item].id)
                          : -1;
  } else {
    m->default_item = static_cast<int>(item);
  }
  return true;
}

int GetMenuDefaultItem(HMENU menu) {
  const Menu* m = Find(menu);
  if (m == nullptr) return -1;
  for (const TsMenuItem& item : m->items) {
    if (!item.separator && static_cast<int>(item.id) == m->default_item) return m->default_item;
  }
  return -1;
}

std::vector<TsMenuItem> TsMenuItems(HMENU menu) {
  const Menu* m = Find(menu);
  return m ? m->items : std::vector<TsMenuItem>();
}

bool CMenu::CreatePopupMenu() {
  if (m_hMenu != nullptr) return false;
  m_hMenu = ::CreatePopupMenu();
  return true;
}

bool CMenu::DestroyMenu() {
  if (m_hMenu == nullptr) return false;
  ::DestroyMenu(m_hMenu);
  m_hMenu = nullptr;
  return true;
}

int CMenu::TrackPopupMenu(UINT flags, int x, int y, CWnd* owner) {
  if (!IsMenu(m_hMenu)) return 0;
  UINT chosen =
      UserAnswers().ChooseMenuItem(m_hMenu, POINT{x, y}, owner ? owner->GetSafeHwnd() : nullptr);
  // Only an item of the menu can be chosen.
  bool known = false;
  for (const TsMenuItem& item : TsMenuItems(m_hMenu))
    known = known || (!item.separator && item.id == chosen);
  if (!known) chosen = 0;
  if (flags & TPM_RETURNCMD) return static_cast<int>(chosen);
  return chosen != 0;
}
