#include "events/event_watcher.h"

#include <algorithm>
#include <utility>

#include "data/undo_scope.h"
#include "host/tarsa/tarsa_app.h"
#include "panel/stances_panel.h"
#include "plugin/korvo_plugin.h"

namespace {

// True while the host puts back, or applies again, what it recorded: the records and the stance
// table come back with the objects and the undo records, and nothing is to be handed on or
// removed.
bool Replaying(const CTarsaDoc& doc) { return doc.UndoActive() || doc.RedoActive(); }

// Removes the stances of the document that no object carries, as one undo record, and announces
// it: each removal too when `announce_each`.
void RemoveUnusedStancesUndoably(CTarsaDoc& doc, bool announce_each) {
  CKorvoUndoScope scope(doc);
  CKorvoDocData* table = KorvoPlugIn().DocData(doc.RuntimeSerialNumber());
  table->RemoveUnusedStances(announce_each);
  table->NotifyStancesChanged();
}

// The new half of a replacement is the same object as the old half: it keeps the record as the
// transform left it, or receives a copy of the old half's record when it arrives without one
// (new geometry in the object's place). Its last transform is taken out of nothing again.
void TakeOverRecord(const CTarsaObject& old_object, CTarsaObject& new_object) {
  CKorvoUserData* record = CKorvoUserData::Of(&new_object);
  if (record == nullptr) {
    const CKorvoUserData* old_record = CKorvoUserData::Of(&old_object);
    if (old_record == nullptr) return;
    record = new CKorvoUserData(*old_record);
    if (!new_object.AttachGeometryUserData(record)) {
      delete record;
      return;
    }
  }
  record->m_last_xform.Identity();
}

}  // namespace

CKorvoEventWatcher::~CKorvoEventWatcher() { delete m_command_record; }

void CKorvoEventWatcher::OnEnableEventWatcher(bool) {
  if (!m_pausing) m_match_counts.clear();
}

void CKorvoEventWatcher::OnCloseDocument(CTarsaDoc& doc) { DropCounts(doc); }

void CKorvoEventWatcher::OnNewDocument(CTarsaDoc&) {}

void CKorvoEventWatcher::OnBeginCommand(const CTarsaCommand&, const CTarsaCommandContext&) {
  // A nested command takes the one slot: what the outer command did so far is finished first.
  FinishCommandRecord();
  m_command_record = new CKorvoCommandRecord();
}

void CKorvoEventWatcher::OnEndCommand(const CTarsaCommand&, const CTarsaCommandContext&,
                                      CTarsaCommand::result) {
  FinishCommandRecord();
  // Any command may have moved objects to or from a stance: the panel's marks follow.
  ScheduleStancesPanelRebuild();
}

void CKorvoEventWatcher::OnReplaceObject(CTarsaDoc&, CTarsaObject& old_object, CTarsaObject&) {
  m_replaced_object = &old_object;
}

void CKorvoEventWatcher::OnUnDeleteObject(CTarsaDoc& doc, CTarsaObject& object) {
  if (CKorvoMatchCounts* counts = KeptCounts(doc)) counts->Count(object, 1);
}

void CKorvoEventWatcher::OnDeleteObject(CTarsaDoc& doc, CTarsaObject& object) {
  CKorvoMatchCounts* counts = KeptCounts(doc);
  if (counts) counts->Count(object, -1);
  if (m_replaced_object != nullptr || Replaying(doc)) return;
  if (m_command_record) {
    m_command_record->NoteDeletedObject(doc, object, counts);
    return;
  }
  if (CKorvoUserData::Of(&object) == nullptr) return;
  if (!doc.UndoRecordingIsActive()) {
    RemoveUnusedStancesUndoably(doc, true);
    return;
  }
  // A script or another plug-in deleting many objects one at a time sweeps the document once.
  const unsigned int serial = doc.RuntimeSerialNumber();
  std::vector<unsigned int>& asked = m_removals_at_step_end;
  if (std::find(asked.begin(), asked.end(), serial) == asked.end()) asked.push_back(serial);
}

void CKorvoEventWatcher::OnAddObject(CTarsaDoc& doc, CTarsaObject& object) {
  if (CKorvoOpenDocStackItem* item = m_open_stack.Top()) {
    m_replaced_object = nullptr;
    if (item->m_merge || item->m_reference) item->m_added_ids.Append(object.ModelObjectId());
    DropCounts(doc);
    return;
  }
  TakeInAddedObject(doc, object);
  if (CKorvoMatchCounts* counts = KeptCounts(doc)) counts->Count(object, 1);
}

void CKorvoEventWatcher::TakeInAddedObject(CTarsaDoc& doc, CTarsaObject& object) {
  if (m_replaced_object != nullptr) {
    const CTarsaObject* old_object = m_replaced_object;
    m_replaced_object = nullptr;
    if (!Replaying(doc)) TakeOverRecord(*old_object, object);
    return;
  }
  if (Replaying(doc)) return;
  if (CKorvoUserData* record = CKorvoUserData::Of(&object)) {
    // A duplicate of a stance object, moved on its way in: take the move back out, once, so that
    // a restore moves the copy by the same transform as its source.
    record->m_accumulated_xform = record->m_last_xform.Inverse() * record->m_accumulated_xform;
    record->m_last_xform.Identity();
  }
  if (m_command_record) m_command_record->NoteAddedObject(object);
}

void CKorvoEventWatcher::UndoEvent(undo_event event, unsigned int, const CTarsaCommand*) {
  if (event == end_recording) {
    const std::vector<unsigned int> removals = std::move(m_removals_at_step_end);
    m_removals_at_step_end.clear();
    for (unsigned int serial : removals) {
      if (CTarsaDoc* doc = CTarsaDoc::FromRuntimeSerialNumber(serial)) {
        RemoveUnusedStancesUndoably(*doc, true);
      }
    }
    return;
  }
  if (event != end_undo && event != end_redo) return;
  CTarsaDoc* doc = TarsaApp().ObsoleteActiveDoc();
  ScheduleStancesPanelRebuild();
  if (doc == nullptr) doc = CTarsaDoc::FromRuntimeSerialNumber(0);
  if (doc != nullptr) StanceChanged(*doc);
}

const CKorvoMatchCounts& CKorvoEventWatcher::MatchCounts(CTarsaDoc& doc) {
  if (!IsEnabled() || !IsRegistered()) {
    m_unkept_counts.reset(new CKorvoMatchCounts(doc));
    return *m_unkept_counts;
  }
  std::unique_ptr<CKorvoMatchCounts>& counts = m_match_counts[doc.RuntimeSerialNumber()];
  if (!counts) counts.reset(new CKorvoMatchCounts(doc));
  return *counts;
}

void CKorvoEventWatcher::CountReplacement(CTarsaDoc& doc, const CTarsaObject& old_object,
                                          const CTarsaObject& new_object) {
  CKorvoMatchCounts* counts = KeptCounts(doc);
  if (counts == nullptr) return;
  counts->Count(old_object, -1);
  counts->Count(new_object, 1);
}

CKorvoMatchCounts* CKorvoEventWatcher::KeptCounts(const CTarsaDoc& doc) {
  // Most often nothing is kept (no panel, no question yet): one test, no look-up.
  if (m_match_counts.empty()) return nullptr;
  const auto found = m_match_counts.find(doc.RuntimeSerialNumber());
  return found == m_match_counts.end() ? nullptr : found->second.get();
}

void CKorvoEventWatcher::DropCounts(const CTarsaDoc& doc) {
  if (!m_match_counts.empty()) m_match_counts.erase(doc.RuntimeSerialNumber());
}

void CKorvoEventWatcher::FinishCommandRecord() {
  if (m_command_record == nullptr) return;
  const std::vector<unsigned int> removals = m_command_record->RemovalDocuments();
  delete m_command_record;
  m_command_record = nullptr;
  for (unsigned int serial : removals) {
    if (CTarsaDoc* doc = CTarsaDoc::FromRuntimeSerialNumber(serial)) {
      RemoveUnusedStancesUndoably(*doc, false);
    }
  }
}
