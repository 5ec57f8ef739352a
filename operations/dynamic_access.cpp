#include "operations/dynamic_access.h"

#include "data/undo_scope.h"
#include "operations/every_object_iterator.h"
#include "operations/object_wrapper.h"
#include "plugin/korvo_plugin.h"

namespace {

CKorvoDocData& TableOf(CTarsaDoc& doc) { return *KorvoPlugIn().DocData(doc.RuntimeSerialNumber()); }

bool StanceExists(CTarsaDoc& doc, const ZK_UUID& stance_id) {
  return TableOf(doc).FindById(stance_id) != nullptr;
}

// Gives each listed object an entry for the stance at its present placement, unless it has one.
// Every listed object is rewritten through its working copy.
void AddEntries(const ZK_UUID& stance_id, const ZK_SimpleArray<const CTarsaObject*>& objects) {
  for (int i = 0; i < objects.Count(); ++i) {
    CKorvoObjectWrapper wrapper(objects[i]);
    CKorvoUserData* record = wrapper.GetEditableRecord();
    if (record && !record->HasEntry(stance_id)) {
      record->Add(stance_id, record->m_accumulated_xform);
    }
  }
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
  CKorvoEveryObjectIterator it(doc);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    const CKorvoUserData* record = CKorvoObjectWrapper(object).GetRecord();
    if (record && record->HasEntry(stance_id)) objects.Append(object);
  }
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
  ZK_UUID stance_id;
  if (!ZK_CreateUuid(stance_id)) return ZK_nil_uuid;
  CKorvoUndoScope scope(doc);
  CKorvoDocData& table = TableOf(doc);
  if (table.NameExists(name)) table.RemoveByName(name);
  table.Add(stance_id, name);
  AddEntries(stance_id, objects);
  return stance_id;
}

bool CKorvoDynamicAccess::RestoreStance(CTarsaDoc& doc, const ZK_UUID& stance_id) {
  if (!StanceExists(doc, stance_id)) return false;
  CKorvoUndoScope scope(doc);
  CKorvoEveryObjectIterator it(doc);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    if (object->HistoryRecord() != nullptr) continue;
    CKorvoObjectWrapper wrapper(object);
    if (wrapper.GetRecord() != nullptr) wrapper.ApplyStance(stance_id);
  }
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
  CKorvoEveryObjectIterator it(doc);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    CKorvoObjectWrapper wrapper(object);
    const CKorvoUserData* record = wrapper.GetRecord();
    if (record == nullptr || !record->HasEntry(stance_id)) continue;
    const ZK_Xform present = record->m_accumulated_xform;
    if (CKorvoUserData* editable = wrapper.GetEditableRecord()) {
      editable->SetXform(stance_id, present);
    }
  }
  doc.Regen();
  return true;
}

bool CKorvoDynamicAccess::AppendStance(CTarsaDoc& doc, const ZK_UUID& stance_id,
                                       const ZK_SimpleArray<const CTarsaObject*>& objects) {
  if (!StanceExists(doc, stance_id)) return false;
  CKorvoUndoScope scope(doc);
  AddEntries(stance_id, objects);
  doc.Regen();
  return true;
}
