#include "shell/panel_text.h"

#include <map>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_named_object_panel.h"

namespace {

// What was printed last of each open panel, by tab id: its caption and its text.
struct Shown {
  std::wstring caption;
  std::wstring text;
};
std::map<ZK_UUID, Shown>& LastShown() {
  static std::map<ZK_UUID, Shown> shown;
  return shown;
}

void Print(const std::wstring& text) { CTarsaStandIn::CommandLine().Print(text); }

}  // namespace

const std::vector<TsPanelButton>& TsPanelButtons() {
  using Panel = CTsNamedDocObjectManagerDlg;
  // 1149, 2112 and 1148 are the tool buttons of the Stances panel.
  static const std::vector<TsPanelButton> buttons = {
      {Panel::save_button, L"Save"},
      {Panel::restore_button, L"Restore"},
      {Panel::delete_button, L"Delete"},
      {Panel::rename_button, L"Rename"},
      {1149, L"Update"},
      {2112, L"Append"},
      {1148, L"Select"},
      {Panel::help_button, L"Help"},
  };
  return buttons;
}

std::wstring TsPanelText(CTsNamedDocObjectManagerDlg& panel) {
  std::wstring text = std::wstring(panel.Caption()) + L" panel:\n";
  const CListCtrl& list = panel.List();
  for (int i = 0; i < list.GetItemCount(); ++i) {
    text += list.GetItemState(i, LVIS_SELECTED) ? L"  * " : L"    ";
    text += list.GetItemText(i) + (TsItemMatches(list, i) ? L" (matches)\n" : L"\n");
  }
  if (list.GetItemCount() == 0) text += L"  (no items)\n";
  std::wstring enabled;
  for (const TsPanelButton& button : TsPanelButtons()) {
    const HWND control = panel.GetDlgItem(button.control_id);
    if (control != nullptr && IsWindowEnabled(control)) enabled += std::wstring(L" ") + button.name;
  }
  return text + L"  Enabled:" + (enabled.empty() ? L" none" : enabled) + L"\n";
}

bool TsItemMatches(const CListCtrl& list, int item) {
  return list.GetItemState(item, LVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(1);
}

std::wstring TsMatchesText(const CListCtrl& list) {
  std::wstring names;
  for (int i = 0; i < list.GetItemCount(); ++i) {
    if (!TsItemMatches(list, i)) continue;
    names += (names.empty() ? L"" : L", ") + list.GetItemText(i);
  }
  return names.empty() ? L"Matches no stance" : L"Matches: " + names;
}

void TsShowPanel(CTsNamedDocObjectManagerDlg& panel) {
  Shown& shown = LastShown()[panel.TabId()];
  shown.caption = panel.Caption();
  shown.text = TsPanelText(panel);
  Print(shown.text);
}

void TsShowPanelChanges() {
  CTarsaStandIn::RunIdleWork();
  std::map<ZK_UUID, Shown> closed = LastShown();
  for (CTsNamedDocObjectManagerDlg* panel : CTarsaStandIn::Panels()) {
    closed.erase(panel->TabId());
    const auto last = LastShown().find(panel->TabId());
    if (last == LastShown().end() || last->second.text != TsPanelText(*panel)) TsShowPanel(*panel);
  }
  for (const auto& entry : closed) {
    Print(L"The " + entry.second.caption + L" panel is closed.\n");
    LastShown().erase(entry.first);
  }
}
