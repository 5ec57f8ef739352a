#include "command/use_flows.h"

#include "command/flow_prompts.h"
#include "host/tarsa/tarsa_app.h"
#include "host/tarsa/tarsa_dockbar.h"
#include "operations/stance_members.h"
#include "panel/stances_panel.h"

namespace {

// Asks for a name where Enter alone is an answer: true with a non-empty name; false with the
// flow's result (cancel for a cancel, else success) in `result`.
bool AskForName(const wchar_t* english, int string_id, ZK_wString& name,
                CTarsaCommand::result& result) {
  const CTarsaGet::result answer = AskForText(TsLocalizeString(english, string_id), true, name);
  result = answer == CTarsaGet::cancel ? CTarsaCommand::cancel : CTarsaCommand::success;
  return answer == CTarsaGet::string && !name.IsEmpty();
}

// The option prompt of Visible, with the list value showing `visible`: the option's index.
int BuildVisiblePrompt(CTarsaGetOption& get, bool visible) {
  get.AcceptNothing(true);
  get.SetCommandPrompt(TsLocalizeString(L"Choose stance option", 31604));
  const CTarsaCommandOptionValue none(nullptr, nullptr);
  return get.AddCommandOptionList(
      TsLocalizeCommandOptionName(L"Visible", 31605), visible ? 0 : 1,
      TsLocalizeCommandOptionValue(L"Yes", 31606), TsLocalizeCommandOptionValue(L"No", 31607),
      TsLocalizeCommandOptionValue(L"Toggle", 31608), none, none, none, none, none, none, none);
}

void ShowPanel(bool visible) {
  if (visible) {
    TarsaUiOpenDockbarTab(g_stances_panel_tab_id);
  } else {
    TarsaUiCloseDockbarTab(g_stances_panel_tab_id);
  }
}

}  // namespace

CTarsaCommand::result DoRestore(CTarsaDoc& doc, CKorvoDocData& table) {
  const CKorvoDocData::USER_DATA* stance = nullptr;
  CTarsaCommand::result result;
  if (!AskForStoredPosition(L"Name for position to restore", 35184, table, stance, result)) {
    return result;
  }
  RestoreStanceMembers(doc, stance->m_id);
  doc.Regen();
  return CTarsaCommand::success;
}

CTarsaCommand::result DoSelect(CTarsaDoc& doc, CKorvoDocData& table) {
  ZK_wString name;
  CTarsaCommand::result result;
  if (!AskForName(L"Select object(s) of stance", 33393, name, result)) return result;
  const CKorvoDocData::USER_DATA* stance = table.FindByName(name);
  if (stance == nullptr) {
    PrintMessage(L"Stance <%s> does not exist.\n", 33394, name);
    return CTarsaCommand::success;
  }
  ZK_SimpleArray<const CTarsaObject*> members;
  CollectStanceMembers(doc, stance->m_id, members);
  for (int i = 0; i < members.Count(); ++i) members[i]->Select(true, true, true, false);
  doc.Redraw();
  return CTarsaCommand::success;
}

CTarsaCommand::result DoDelete(CKorvoDocData& table) {
  ZK_wString name;
  CTarsaCommand::result result;
  if (!AskForName(L"Stance to delete", 19719, name, result)) return result;
  if (!table.RemoveByName(name)) {
    PrintMessage(L"Stored position <%s> does not exist.\n", 19720, name);
  }
  return CTarsaCommand::success;
}

CTarsaCommand::result DoRename(CKorvoDocData& table) {
  ZK_wString old_name;
  CTarsaCommand::result result;
  if (!AskForName(L"Stance to rename", 19721, old_name, result)) return result;
  if (!table.NameExists(old_name)) {
    PrintMessage(L"Stored position <%s> does not exist.\n", 19722, old_name);
    return CTarsaCommand::success;
  }
  ZK_wString new_name;
  if (!AskForName(L"New name", 19723, new_name, result)) return result;
  if (table.Rename(old_name, new_name) != 1) {
    PrintMessage(L"New name <%s> already exists.\n", 19724, new_name);
  }
  return CTarsaCommand::success;
}

CTarsaCommand::result DoList(CKorvoDocData& table) {
  for (const auto* entry = table.FirstEntry(); entry; entry = table.NextEntry()) {
    TarsaApp().Print(L"%s\n", entry->m_name.Array());
  }
  return CTarsaCommand::success;
}

CTarsaCommand::result DoVisible() {
  // The host is asked once; from then on the flow keeps the panel's visibility itself.
  bool visible = TarsaUiIsTabVisible(g_stances_panel_tab_id, false);
  for (;;) {
    CTarsaGetOption get;
    const int option = BuildVisiblePrompt(get, visible);
    const CTarsaGet::result answer = get.GetOption();
    if (answer == CTarsaGet::cancel) return CTarsaCommand::cancel;
    if (answer == CTarsaGet::nothing) return CTarsaCommand::success;
    const CTarsaCommandOption* picked = get.Option();
    if (answer != CTarsaGet::option || picked == nullptr || picked->m_option_index != option) {
      continue;
    }
    switch (picked->m_list_option_current) {
      case 0:
        visible = true;
        break;
      case 1:
        visible = false;
        break;
      default:
        visible = !visible;
        break;
    }
    ShowPanel(visible);
  }
}
