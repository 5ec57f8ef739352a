#include "operations/dynamic_access.h"

#include "data/undo_scope.h"
#include "operations/stance_members.h"
#include "plugin/korvo_plugin.h"

namespace {

CKorvoDocData& TableOf(CTarsaDoc& doc) { return *KorvoPlugIn().DocData(doc.RuntimeSerialNumber()); }

bool StanceExists(CTarsaDoc& doc, const ZK_UUID& stance_id) {
  return TableOf(doc).FindById(stance_id) != nullptr;
}

}  // namespace

int CKorvoDynamicAccess::StanceCount(CTarsaDoc& doc) { return TableOf(doc).Count(); }

void CKorvoDynamicAccess::GetStanceIds(CTarsaDoc& doc, ZK_SimpleArray<ZK_UUID>& ids) {
  CKorvoDocData& table = TableOf(doc);
  for (const auto* entry = table.FirstEntry(); entry; entry = table.NextEntry()) {
    ids.Append(entry->m_id);
  }
}

bool CKorvoDynamicAccess::GetStanceObjects(CTarsaDoc& doc, const ZK_UUID& stance_id,
                                           ZK_SimpleArray<const CTarsaObject*>& objects) {
  if (!StanceExists(doc, stance_id)) return false;
  CollectStanceMembers(doc, stance_id, objects);
  return true;
}

bool CKorvoDynamicAccess::GetStanceName(CTarsaDoc& doc, const ZK_UUID& stance_id,
                                        ZK_wString& name) {
  const CKorvoDocData::USER_DATA* entry = TableOf(doc).FindById(stance_id);
  if (entry == nullptr) return false;
  name = entry->m_name;
  return true;
}

ZK_UUID CKorvoDynamicAccess::SaveStance(CTarsaDoc& doc, const wchar_t* name,
                                        const ZK_SimpleArray<const CTarsaObject*>& objects) {
  CKorvoUndoScope scope(doc);
  return SaveNewStance(TableOf(doc), name, objects);
}

bool CKorvoDynamicAccess::RestoreStance(CTarsaDoc& doc, const ZK_UUID& stance_id) {
  if (!StanceExists(doc, stance_id)) return false;
  CKorvoUndoScope scope(doc);
  RestoreStanceMembers(doc, stance_id);
  doc.Regen();
  return true;
}

bool CKorvoDynamicAccess::DeleteStance(CTarsaDoc& doc, const ZK_UUID& stance_id) {
  CKorvoUndoScope scope(doc);
  return !ZK_UuidIsNil(stance_id) && TableOf(doc).Remove(stance_id);
}

bool CKorvoDynamicAccess::RenameStance(CTarsaDoc& doc, const ZK_UUID& stance_id,
                                       const wchar_t* new_name) {
  if (!StanceExists(doc, stance_id)) return false;
  CKorvoUndoScope scope(doc);
  return TableOf(doc).Rename(stance_id, new_name) == 1;
}

bool CKorvoDynamicAccess::UpdateStance(CTarsaDoc& doc, const ZK_UUID& stance_id) {
  if (!StanceExists(doc, stance_id)) return false;
  CKorvoUndoScope scope(doc);
  UpdateStanceMembers(doc, stance_id);
  doc.Regen();
  return true;
}

bool CKorvoDynamicAccess::AppendStance(CTarsaDoc& doc, const ZK_UUID& stance_id,
                                       const ZK_SimpleArray<const CTarsaObject*>& objects) {
  if (!StanceExists(doc, stance_id)) return false;
  CKorvoUndoScope scope(doc);
  AddToStance(stance_id, objects);
  doc.Regen();
  return true;
}
