#include "command/stance_check_command.h"

#include "command/flow_prompts.h"
#include "drift/stance_drift.h"
#include "host/tarsa/tarsa_app.h"
#include "plugin/korvo_plugin.h"

namespace {

const ZK_UUID kCommandId = {
    0x5E0B6C2A, 0x8F3D, 0x4B71, {0x9C, 0x24, 0x3A, 0x7D, 0x1E, 0x96, 0xB0, 0x58}};

void PrintStanceLine(const CKorvoDocData::USER_DATA& stance, const KorvoStanceSummary& summary) {
  if (summary.Matches()) {
    TarsaApp().Print(TsLocalizeString(L"%s: members %d, matches\n", 40003), stance.m_name.Array(),
                     summary.m_members);
    return;
  }
  TarsaApp().Print(
      TsLocalizeString(L"%s: members %d, moved %d, largest distance %g, largest angle %g\n", 40004),
      stance.m_name.Array(), summary.m_members, summary.m_moved, summary.m_largest_distance,
      summary.m_largest_angle);
}

void PrintMemberLine(const KorvoMemberDrift& member) {
  const ZK_wString name = ObjectName(*member.m_object);
  switch (member.m_state) {
    case KorvoMemberState::at_stance:
      PrintMessage(L"%s: at the stance\n", 40005, name);
      return;
    case KorvoMemberState::not_restorable:
      PrintMessage(L"%s: not restorable, construction history\n", 40006, name);
      return;
    case KorvoMemberState::moved:
      TarsaApp().Print(member.m_scale_changed
                           ? TsLocalizeString(L"%s: moved, distance %g, angle %g, scaled\n", 40008)
                           : TsLocalizeString(L"%s: moved, distance %g, angle %g\n", 40007),
                       name.Array(), member.m_distance, member.m_angle);
      return;
  }
}

void CheckEveryStance(CTarsaDoc& doc, const CKorvoDocData& table) {
  if (table.Count() == 0) {
    PrintMessage(L"No stances have been saved.\n", 40009);
    return;
  }
  const std::vector<KorvoStanceSummary> summaries = MeasureEveryStance(doc, table);
  for (int i = 0; i < table.Count(); ++i) PrintStanceLine(*table.m_entries[i], summaries[i]);
}

void CheckOneStance(CTarsaDoc& doc, const CKorvoDocData::USER_DATA& stance) {
  const std::vector<KorvoMemberDrift> members = MeasureStance(doc, stance.m_id);
  if (members.empty()) PrintMessage(L"No object carries stance <%s>.\n", 40010, stance.m_name);
  for (const KorvoMemberDrift& member : members) PrintMemberLine(member);
}

}  // namespace

CCommandStanceCheck::CCommandStanceCheck() : CTarsaCommand(false, false, nullptr, false) {}

CCommandStanceCheck::~CCommandStanceCheck() = default;

ZK_UUID CCommandStanceCheck::CommandId() const { return kCommandId; }

const wchar_t* CCommandStanceCheck::EnglishCommandName() { return L"StanceCheck"; }

CTarsaCommand::result CCommandStanceCheck::Execute(const CTarsaCommandContext& context) {
  CTarsaDoc* doc = context.Document();
  if (doc == nullptr) return failure;
  ZK_wString name;
  const CTarsaGet::result answer =
      AskForText(TsLocalizeString(L"Stance to check <All>", 40001), true, name);
  if (answer == CTarsaGet::cancel) return cancel;
  CKorvoDocData& table = *KorvoPlugIn().DocData(doc->RuntimeSerialNumber());
  if (name.IsEmpty()) {
    CheckEveryStance(*doc, table);
    return success;
  }
  const CKorvoDocData::USER_DATA* stance = table.FindByName(name);
  if (stance == nullptr) {
    PrintNoStance(name);
  } else {
    CheckOneStance(*doc, *stance);
  }
  return success;
}
