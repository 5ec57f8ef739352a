// The Panel command: what a person does with the mouse on the open list panel (the Stances
// panel), typed on the command line:
//   Show                  prints the panel as it is now.
//   Select NAME... Enter  selects exactly the items named (Enter alone: none).
//   Click BUTTON          clicks a button: Save Restore Delete Rename Update Append Select Help.
//   Menu                  opens the context menu.
//   DoubleClick NAME      double-clicks an item.
//   Rename NAME           selects the item and clicks Rename, which opens its label for editing.
// The host delivers a panel action once no command runs, so the action starts when this command
// has ended; the menu, dialogs and questions it shows ask on the command line then
// (shell/command_line_answers.h). Items are named as the panel shows them, in any letter case.
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_app.h"
#include "host/tarsa/tarsa_get.h"
#include "host/tarsa/tarsa_named_object_panel.h"
#include "shell/panel_text.h"
#include "shell/shell_command.h"

namespace {

using Panel = CTsNamedDocObjectManagerDlg;

void Print(const std::wstring& text) { TarsaApp().Print(L"%s", text.c_str()); }

// The item that shows `name`, ignoring letter case, or -1.
int FindItem(Panel& panel, const std::wstring& name) {
  const CListCtrl& list = panel.List();
  for (int i = 0; i < list.GetItemCount(); ++i) {
    if (ZK_wString(list.GetItemText(i)).CompareNoCase(name.c_str()) == 0) return i;
  }
  return -1;
}

// Asks for an item by name until the panel shows one: 1 with `item`, 0 for Enter, -1 when
// cancelled.
int AskForItem(Panel& panel, const wchar_t* prompt, int& item) {
  for (;;) {
    CTarsaGetString get;
    get.SetCommandPrompt(prompt);
    get.AcceptNothing(true);
    const CTarsaGet::result answer = get.GetString();
    if (answer == CTarsaGet::cancel) return -1;
    if (answer != CTarsaGet::string || *get.String() == 0) return 0;
    item = FindItem(panel, get.String());
    if (item >= 0) return 1;
    Print(std::wstring(L"The ") + panel.Caption() + L" panel shows no item named \"" +
          get.String() + L"\".\n");
  }
}

// Clicks the button, saying why when it cannot be clicked.
CTarsaCommand::result ClickButton(Panel& panel, const TsPanelButton& button) {
  const HWND control = panel.GetDlgItem(button.control_id);
  if (control == nullptr) {
    Print(std::wstring(L"The ") + panel.Caption() + L" panel has no " + button.name +
          L" button.\n");
    return CTarsaCommand::failure;
  }
  if (!CTarsaStandIn::Click(panel, button.control_id)) {
    Print(std::wstring(L"The ") + button.name + L" button is disabled.\n");
    return CTarsaCommand::failure;
  }
  return CTarsaCommand::success;
}

CTarsaCommand::result Select(Panel& panel) {
  std::vector<int> items;
  int item = -1;
  for (;;) {
    const int answer = AskForItem(panel, L"Select items", item);
    if (answer < 0) return CTarsaCommand::cancel;
    if (answer == 0) break;
    items.push_back(item);
  }
  CTarsaStandIn::SelectItems(panel, items);
  return CTarsaCommand::success;
}

CTarsaCommand::result Click(Panel& panel) {
  CTarsaGetOption get;
  get.SetCommandPrompt(L"Button to click");
  for (const TsPanelButton& button : TsPanelButtons())
    get.AddCommandOption(CTarsaCommandOptionName(button.name, button.name));
  if (get.GetOption() != CTarsaGet::option) return CTarsaCommand::cancel;
  return ClickButton(panel, TsPanelButtons()[get.Option()->m_option_index - 1]);
}

CTarsaCommand::result OpenMenu(Panel& panel) {
  const RECT list = panel.List().WindowRect();
  CTarsaStandIn::ContextMenu(panel,
                             POINT{(list.left + list.right) / 2, (list.top + list.bottom) / 2});
  return CTarsaCommand::success;
}

CTarsaCommand::result DoubleClick(Panel& panel) {
  int item = -1;
  if (AskForItem(panel, L"Item to double-click", item) != 1) return CTarsaCommand::cancel;
  CTarsaStandIn::DoubleClick(panel, item);
  return CTarsaCommand::success;
}

CTarsaCommand::result Rename(Panel& panel) {
  int item = -1;
  if (AskForItem(panel, L"Item to rename", item) != 1) return CTarsaCommand::cancel;
  CTarsaStandIn::SelectItems(panel, {item});
  return ClickButton(panel, {Panel::rename_button, L"Rename"});
}

class PanelCommand : public CTarsaShellCommand {
 public:
  using CTarsaShellCommand::CTarsaShellCommand;
  result Execute(const CTarsaCommandContext&) override {
    const std::vector<Panel*> panels = CTarsaStandIn::Panels();
    if (panels.empty()) {
      Print(L"No panel is open; Stance opens the Stances panel.\n");
      return failure;
    }
    Panel& panel = *panels.front();
    CTarsaGetOption get;
    get.SetCommandPrompt(L"Panel action");
    const int show = get.AddCommandOption(CTarsaCommandOptionName(L"Show", L"Show"));
    const int select = get.AddCommandOption(CTarsaCommandOptionName(L"Select", L"Select"));
    const int click = get.AddCommandOption(CTarsaCommandOptionName(L"Click", L"Click"));
    const int menu = get.AddCommandOption(CTarsaCommandOptionName(L"Menu", L"Menu"));
    const int double_click =
        get.AddCommandOption(CTarsaCommandOptionName(L"DoubleClick", L"DoubleClick"));
    get.AddCommandOption(CTarsaCommandOptionName(L"Rename", L"Rename"));
    if (get.GetOption() != CTarsaGet::option) return cancel;
    const int picked = get.Option()->m_option_index;
    if (picked == show) {
      TsShowPanel(panel);
      return success;
    }
    if (picked == select) return Select(panel);
    if (picked == click) return Click(panel);
    if (picked == menu) return OpenMenu(panel);
    if (picked == double_click) return DoubleClick(panel);
    return Rename(panel);
  }
};

PanelCommand thePanelCommand(L"Panel", "7C1E0A10-0501-4B2C-9D3E-4F5A6B7C8D9E");

}  // namespace
