#include "command/stance_command.h"

#include "command/save_flows.h"
#include "command/use_flows.h"
#include "data/undo_scope.h"
#include "host/tarsa/tarsa_dockbar.h"
#include "host/tarsa/tarsa_get.h"
#include "panel/stances_panel.h"
#include "plugin/korvo_plugin.h"

namespace {

const ZK_UUID kCommandId = {
    0xCBD07E76, 0x5DB9, 0x4712, {0xB0, 0x14, 0x56, 0x32, 0xBB, 0xF8, 0xDB, 0xAD}};

// The options of the main prompt, in the order they are shown.
enum Flow { kList, kSave, kRestore, kDelete, kRename, kSelect, kUpdate, kAppend, kVisible };
constexpr int kFlowCount = 9;
struct OptionText {
  const wchar_t* english;
  int string_id;
};
const OptionText kOptions[kFlowCount] = {
    {L"List", 17987},   {L"Save", 17988},   {L"Restore", 17989},
    {L"Delete", 17990}, {L"Rename", 17991}, {L"Select", 33392},
    {L"Update", 34036}, {L"Append", 34195}, {L"Visible", 31603}};

CTarsaCommand::result RunFlow(int flow, CTarsaDoc& doc, CKorvoDocData& table) {
  switch (flow) {
    case kList:
      return DoList(table);
    case kSave:
      return DoSave(table);
    case kRestore:
      return DoRestore(doc, table);
    case kDelete:
      return DoDelete(table);
    case kRename:
      return DoRename(table);
    case kSelect:
      return DoSelect(doc, table);
    case kUpdate:
      return DoUpdate(doc, table);
    case kAppend:
      return DoAppend(doc, table);
    default:
      return DoVisible();
  }
}

// Shows the option prompt until it is answered with something other than an option.
CTarsaCommand::result RunOptionLoop(CTarsaDoc& doc, CKorvoDocData& table) {
  for (;;) {
    CTarsaGetOption get;
    get.AcceptNothing(true);
    get.SetCommandPrompt(TsLocalizeString(L"Choose stance option", 19710));
    int indexes[kFlowCount];
    for (int i = 0; i < kFlowCount; ++i) {
      indexes[i] = get.AddCommandOption(
          TsLocalizeCommandOptionName(kOptions[i].english, kOptions[i].string_id),
          CTarsaCommandOptionValue(nullptr, nullptr), 0);
    }
    const CTarsaGet::result answer = get.GetOption();
    if (answer != CTarsaGet::option) {
      return answer == CTarsaGet::nothing ? CTarsaCommand::success : CTarsaCommand::cancel;
    }
    const CTarsaCommandOption* picked = get.Option();
    if (picked == nullptr) return CTarsaCommand::failure;
    int flow = -1;
    for (int i = 0; i < kFlowCount; ++i) {
      if (indexes[i] == picked->m_option_index) flow = i;
    }
    if (flow < 0) return CTarsaCommand::failure;
    RunFlow(flow, doc, table);
    // Select redraws for itself; every other flow leaves the regeneration to the command.
    if (flow != kSelect) doc.Regen();
  }
}

}  // namespace

CCommandKorvo::CCommandKorvo() : CTarsaCommand(false, false, nullptr, false) {}

CCommandKorvo::~CCommandKorvo() = default;

ZK_UUID CCommandKorvo::CommandId() const { return kCommandId; }

const wchar_t* CCommandKorvo::EnglishCommandName() { return L"Stance"; }

CTarsaCommand::result CCommandKorvo::Execute(const CTarsaCommandContext& context) {
  if (context.IsInteractive()) {
    TarsaUiOpenDockbarTab(g_stances_panel_tab_id);
    return success;
  }
  CTarsaDoc* doc = context.Document();
  if (doc == nullptr) return failure;
  // The snapshot comes first, so that undo brings back the stances removed here too.
  CKorvoUndoScope scope(*doc);
  CKorvoDocData& table = *KorvoPlugIn().DocData(doc->RuntimeSerialNumber());
  table.RemoveUnusedStances();
  return RunOptionLoop(*doc, table);
}
