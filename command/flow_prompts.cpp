#include "command/flow_prompts.h"

#include "host/tarsa/tarsa_app.h"

CTarsaGet::result AskForText(const wchar_t* prompt, bool accept_nothing, ZK_wString& text) {
  CTarsaGetString get;
  get.AcceptNothing(accept_nothing);
  get.SetCommandPrompt(prompt);
  const CTarsaGet::result result = get.GetString();
  text = result == CTarsaGet::string ? get.String() : L"";
  return result;
}

CKorvoDocData::USER_DATA* ScanForName(CKorvoDocData& table, const wchar_t* name) {
  for (CKorvoDocData::USER_DATA* entry = table.FirstEntry(); entry; entry = table.NextEntry()) {
    if (entry->m_name.CompareNoCase(name) == 0) return entry;
  }
  return nullptr;
}

bool AskForStoredPosition(const wchar_t* english, int string_id, CKorvoDocData& table,
                          const CKorvoDocData::USER_DATA*& stance, CTarsaCommand::result& result) {
  ZK_wString name;
  const ZK_wString prompt = FormattedPrompt(english, string_id);
  const bool cancelled = AskForText(prompt, false, name) == CTarsaGet::cancel;
  result = cancelled ? CTarsaCommand::cancel : CTarsaCommand::success;
  if (cancelled || name.IsEmpty()) return false;
  stance = ScanForName(table, name);
  if (stance == nullptr) PrintNoStoredPosition(name);
  return stance != nullptr;
}

void PrintNoStoredPosition(const wchar_t* name) {
  PrintMessage(L"Stored position <%s> does not exist.\n", 19718, name);
}

void PrintNoStance(const wchar_t* name) {
  PrintMessage(L"Stance <%s> does not exist.\n", 40002, name);
}

ZK_wString ObjectName(const CTarsaObject& object) {
  const ZK_wString& name = object.Attributes().m_name;
  return name.IsEmpty() ? ZK_UuidToString(object.ModelObjectId()) : name;
}

bool AskForObjects(ZK_SimpleArray<const CTarsaObject*>& objects) {
  CTarsaGetObject get;
  get.AcceptNothing(true);
  get.EnablePreSelect(true, true);
  get.SetCommandPrompt(TsLocalizeString(L"Select objects", 19715));
  if (get.GetObjects(1, 0) != CTarsaGet::object) return false;
  for (int i = 0; i < get.ObjectCount(); ++i) objects.Append(get.Object(i).Object());
  return true;
}

void PrintMessage(const wchar_t* english, int string_id, const wchar_t* name) {
  TarsaApp().Print(TsLocalizeString(english, string_id), name);
}

ZK_wString FormattedPrompt(const wchar_t* english, int string_id) {
  ZK_wString prompt;
  prompt.Format(TsLocalizeString(english, string_id));
  return prompt;
}
