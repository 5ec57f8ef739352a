#include "events/event_watcher.h"

#include "data/undo_scope.h"
#include "host/tarsa/tarsa_app.h"
#include "operations/object_wrapper.h"
#include "panel/stances_panel.h"
#include "plugin/korvo_plugin.h"

CKorvoEventWatcher::~CKorvoEventWatcher() { EndCommandRecord(); }

void CKorvoEventWatcher::OnCloseDocument(CTarsaDoc&) {}

void CKorvoEventWatcher::OnNewDocument(CTarsaDoc&) {}

void CKorvoEventWatcher::OnBeginCommand(const CTarsaCommand&, const CTarsaCommandContext&) {
  EndCommandRecord();
  m_command_record = new CKorvoCommandRecord();
}

void CKorvoEventWatcher::OnEndCommand(const CTarsaCommand&, const CTarsaCommandContext&,
                                      CTarsaCommand::result) {
  EndCommandRecord();
}

void CKorvoEventWatcher::OnReplaceObject(CTarsaDoc&, CTarsaObject& old_object, CTarsaObject&) {
  m_replaced_object = &old_object;
}

void CKorvoEventWatcher::OnUnDeleteObject(CTarsaDoc&, CTarsaObject&) {}

void CKorvoEventWatcher::OnDeleteObject(CTarsaDoc& doc, CTarsaObject& object) {
  if (m_command_record) m_command_record->NoteDeletedObject(doc, object);
  if (doc.RedoActive() || m_replaced_object != nullptr) return;
  if (CKorvoObjectWrapper(&object).GetRecord() == nullptr) return;
  CKorvoUndoScope scope(doc);
  CKorvoDocData* table = KorvoPlugIn().DocData(doc.RuntimeSerialNumber());
  table->RemoveUnusedStances();
  table->NotifyStancesChanged();
}

void CKorvoEventWatcher::OnAddObject(CTarsaDoc& doc, CTarsaObject& object) {
  if (CKorvoOpenDocStackItem* item = m_open_stack.Top()) {
    if (item->m_merge || item->m_reference) item->m_added_ids.Append(object.ModelObjectId());
    return;
  }
  if (m_replaced_object != nullptr) {
    m_replaced_object = nullptr;
  } else if (auto* record = CKorvoUserData::Of(&object)) {
    // A duplicate of a stance object, moved on its way in: take the move back out, so that a
    // restore moves the copy by the same transform as its source.
    record->m_accumulated_xform = record->m_last_xform.Inverse() * record->m_accumulated_xform;
  }
  if (m_command_record) {
    m_command_record->m_added_ids.Append(object.ModelObjectId());
    m_command_record->HandOnRecord(doc);
  }
}

void CKorvoEventWatcher::UndoEvent(undo_event event, unsigned int, const CTarsaCommand*) {
  if (event != end_undo && event != end_redo) return;
  CTarsaDoc* doc = TarsaApp().ObsoleteActiveDoc();
  ScheduleStancesPanelRebuild();
  if (doc == nullptr) doc = CTarsaDoc::FromRuntimeSerialNumber(0);
  if (doc != nullptr) StanceChanged(*doc);
}

void CKorvoEventWatcher::EndCommandRecord() {
  if (m_command_record == nullptr) return;
  m_command_record->m_added_ids.Empty();
  delete m_command_record;
  m_command_record = nullptr;
}
