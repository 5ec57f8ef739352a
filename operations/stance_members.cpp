#include "operations/stance_members.h"

#include "operations/every_object_iterator.h"
#include "operations/object_wrapper.h"
#include "operations/watcher_pause.h"

ZK_UUID SaveNewStance(CKorvoDocData& table, const wchar_t* name,
                      const ZK_SimpleArray<const CTarsaObject*>& objects) {
  ZK_UUID stance_id;
  if (!ZK_CreateUuid(stance_id)) return ZK_nil_uuid;
  table.RemoveByName(name);
  table.Add(stance_id, name);
  AddToStance(stance_id, objects);
  return stance_id;
}

void AddToStance(const ZK_UUID& stance_id, const ZK_SimpleArray<const CTarsaObject*>& objects) {
  // One pause for every commit of the loop, which each commit's own pause then finds in place.
  CKorvoEventWatcherPause pause;
  for (int i = 0; i < objects.Count(); ++i) {
    CKorvoObjectWrapper wrapper(objects[i]);
    CKorvoUserData* record = wrapper.GetEditableRecord();
    if (record && !record->HasEntry(stance_id)) {
      record->Add(stance_id, record->m_accumulated_xform);
    }
  }
}

void RestoreStanceMembers(CTarsaDoc& doc, const ZK_UUID& stance_id) {
  CKorvoEventWatcherPause pause;  // as in AddToStance
  CKorvoEveryObjectIterator it(doc);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    if (object->HistoryRecord() != nullptr) continue;
    CKorvoObjectWrapper(object).ApplyStance(stance_id);
  }
}

void UpdateStanceMembers(CTarsaDoc& doc, const ZK_UUID& stance_id) {
  CKorvoEventWatcherPause pause;  // as in AddToStance
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
}

void CollectStanceMembers(CTarsaDoc& doc, const ZK_UUID& stance_id,
                          ZK_SimpleArray<const CTarsaObject*>& members) {
  CKorvoEveryObjectIterator it(doc);
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    const CKorvoUserData* record = CKorvoObjectWrapper(object).GetRecord();
    if (record && record->HasEntry(stance_id)) members.Append(object);
  }
}
