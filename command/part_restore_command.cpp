#include "command/part_restore_command.h"

#include "command/flow_prompts.h"
#include "host/tarsa/tarsa_app.h"
#include "operations/object_wrapper.h"
#include "plugin/korvo_plugin.h"

namespace {

const ZK_UUID kCommandId = {
    0xA3C1F4E2, 0x6B0D, 0x4E8A, {0xB5, 0xF7, 0x2D, 0x9C, 0x8E, 0x1A, 0x4B, 0x63}};

// Moves the picked members back; the names of the picked objects that are not members, joined
// by ", ". Members with construction history are passed over, as a whole restore passes them.
ZK_wString RestorePickedMembers(const ZK_UUID& stance_id,
                                const ZK_SimpleArray<const CTarsaObject*>& objects) {
  ZK_wString strangers;
  for (int i = 0; i < objects.Count(); ++i) {
    CKorvoObjectWrapper wrapper(objects[i]);
    const CKorvoUserData* record = wrapper.GetRecord();
    if (record == nullptr || !record->HasEntry(stance_id)) {
      if (!strangers.IsEmpty()) strangers += L", ";
      strangers += ObjectName(*objects[i]);
      continue;
    }
    if (objects[i]->HistoryRecord() == nullptr) wrapper.ApplyStance(stance_id);
  }
  return strangers;
}

}  // namespace

CCommandStanceRestoreObjects::CCommandStanceRestoreObjects()
    : CTarsaCommand(false, false, nullptr, false) {}

CCommandStanceRestoreObjects::~CCommandStanceRestoreObjects() = default;

ZK_UUID CCommandStanceRestoreObjects::CommandId() const { return kCommandId; }

const wchar_t* CCommandStanceRestoreObjects::EnglishCommandName() {
  return L"StanceRestoreObjects";
}

CTarsaCommand::result CCommandStanceRestoreObjects::Execute(const CTarsaCommandContext& context) {
  CTarsaDoc* doc = context.Document();
  if (doc == nullptr) return failure;
  ZK_wString name;
  const CTarsaGet::result answer =
      AskForText(TsLocalizeString(L"Stance to restore", 40011), false, name);
  if (answer == CTarsaGet::cancel) return cancel;
  if (name.IsEmpty()) return success;
  const CKorvoDocData::USER_DATA* stance =
      KorvoPlugIn().DocData(doc->RuntimeSerialNumber())->FindByName(name);
  if (stance == nullptr) {
    PrintNoStance(name);
    return success;
  }
  const ZK_UUID stance_id = stance->m_id;
  const ZK_wString stance_name = stance->m_name;
  ZK_SimpleArray<const CTarsaObject*> objects;
  if (!AskForObjects(objects)) return cancel;
  const ZK_wString strangers = RestorePickedMembers(stance_id, objects);
  if (!strangers.IsEmpty()) {
    TarsaApp().Print(TsLocalizeString(L"Not in stance <%s>: %s\n", 40012), stance_name.Array(),
                     strangers.Array());
  }
  doc->Regen();
  return success;
}
