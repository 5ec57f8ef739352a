#include "command/save_flows.h"

#include "command/flow_prompts.h"
#include "host/tarsa/tarsa_doc.h"
#include "operations/stance_members.h"

bool g_bSaveWithoutConfirm = false;

namespace {

constexpr int kIdAttempts = 10;

// The name of the last stance, shown in the Save prompt for information.
ZK_wString LastName(CKorvoDocData& table) {
  ZK_wString last;
  for (const auto* entry = table.FirstEntry(); entry; entry = table.NextEntry()) {
    last = entry->m_name;
  }
  return last;
}

// Asks whether an existing stance may be replaced: success with `replace` set for "Yes"; success
// with `replace` clear for "No"; cancel or failure otherwise.
CTarsaCommand::result AskToReplace(const ZK_wString& name, bool& replace) {
  PrintMessage(L"The name <%s> already exists.\n", 19713, name);
  CTarsaGetOption get;
  get.SetCommandPrompt(TsLocalizeString(L"Do you want to update it?", 19714));
  const int yes = get.AddCommandOption(TsLocalizeCommandOptionName(L"Yes", 17992),
                                       TsLocalizeCommandOptionValue(L"", 0), 0);
  const int no = get.AddCommandOption(TsLocalizeCommandOptionName(L"No", 17993),
                                      TsLocalizeCommandOptionValue(L"", 0), 0);
  if (get.GetOption() != CTarsaGet::option) return CTarsaCommand::cancel;
  const CTarsaCommandOption* picked = get.Option();
  if (picked == nullptr) return CTarsaCommand::failure;
  if (picked->m_option_index != yes && picked->m_option_index != no) {
    return CTarsaCommand::failure;
  }
  replace = picked->m_option_index == yes;
  return CTarsaCommand::success;
}

// Adds a stance of that name under a new id, trying a few ids: the id, or nil when none was
// added.
ZK_UUID AddWithNewId(CKorvoDocData& table, const ZK_wString& name) {
  for (int attempt = 0; attempt < kIdAttempts; ++attempt) {
    ZK_UUID id;
    if (ZK_CreateUuid(id) && table.Add(id, name) == 1) return id;
  }
  return ZK_nil_uuid;
}

}  // namespace

CTarsaCommand::result DoSave(CKorvoDocData& table) {
  ZK_wString prompt;
  prompt.Format(TsLocalizeString(L"Name for the saved position <%s>", 19711),
                LastName(table).Array());
  ZK_wString name;
  if (AskForText(prompt, false, name) == CTarsaGet::cancel) return CTarsaCommand::cancel;
  if (name.IsEmpty()) {
    PrintMessage(L"At least one character has to be entered.\n", 19712);
    return CTarsaCommand::success;
  }
  bool replace = false;
  for (const auto* entry = table.FirstEntry(); entry; entry = table.NextEntry()) {
    if (entry->m_name.CompareNoCase(name) != 0) continue;
    if (g_bSaveWithoutConfirm) {
      replace = true;
      continue;
    }
    const CTarsaCommand::result answer = AskToReplace(name, replace);
    if (answer != CTarsaCommand::success || !replace) return answer;
  }
  ZK_SimpleArray<const CTarsaObject*> objects;
  if (!AskForObjects(objects)) return CTarsaCommand::cancel;
  if (replace) table.RemoveByName(name);
  const ZK_UUID id = AddWithNewId(table, name);
  if (ZK_UuidIsNil(id)) {
    PrintMessage(L"Error! Could not create unique Uuid.\n", 19716);
    return CTarsaCommand::failure;
  }
  AddToStance(id, objects);
  return CTarsaCommand::success;
}

CTarsaCommand::result DoAppend(CTarsaDoc& doc, CKorvoDocData& table) {
  ZK_wString name;
  const ZK_wString prompt = FormattedPrompt(L"Name for position to append to", 35182);
  if (AskForText(prompt, false, name) == CTarsaGet::cancel) return CTarsaCommand::cancel;
  if (name.IsEmpty()) return CTarsaCommand::success;
  ZK_SimpleArray<const CTarsaObject*> objects;
  if (!AskForObjects(objects)) return CTarsaCommand::cancel;
  const CKorvoDocData::USER_DATA* stance = ScanForName(table, name);
  if (stance == nullptr) {
    PrintNoStoredPosition(name);
    return CTarsaCommand::success;
  }
  AddToStance(stance->m_id, objects);
  doc.Regen();
  return CTarsaCommand::success;
}

CTarsaCommand::result DoUpdate(CTarsaDoc& doc, CKorvoDocData& table) {
  const CKorvoDocData::USER_DATA* stance = nullptr;
  CTarsaCommand::result result;
  if (!AskForStoredPosition(L"Name for position to update", 35183, table, stance, result)) {
    return result;
  }
  UpdateStanceMembers(doc, stance->m_id);
  doc.Regen();
  return CTarsaCommand::success;
}
