#include "operations/object_wrapper.h"

#include <cmath>
#include <cstring>
#include <memory>

#include "events/event_watcher.h"
#include "host/tarsa/tarsa_app.h"
#include "operations/watcher_pause.h"
#include "plugin/korvo_plugin.h"

bool SamePlacement(const ZK_Xform& a, const ZK_Xform& b) {
  // An object that has not moved since the save carries the very same bits, most often.
  if (std::memcmp(a.m_xform, b.m_xform, sizeof a.m_xform) == 0) return true;
  for (int r = 0; r < 4; ++r) {
    for (int c = 0; c < 4; ++c) {
      if (!(std::fabs(a(r, c) - b(r, c)) < kPlacementTolerance)) return false;
    }
  }
  return true;
}

ZK_Xform MoveBack(const ZK_Xform& current, const ZK_Xform& saved) {
  if (current.IsAffine() && saved.IsAffine() && current.IsTranslation() && saved.IsTranslation()) {
    // The product below comes to exactly this for two moves (the kernel takes those as moves
    // too), but without building the inverse between: 3% of a restore of moved objects.
    return ZK_Xform::Translation(saved(0, 3) - current(0, 3), saved(1, 3) - current(1, 3),
                                 saved(2, 3) - current(2, 3));
  }
  ZK_Xform move = saved * current.Inverse();
  move(3, 0) = 0.0;
  move(3, 1) = 0.0;
  move(3, 2) = 0.0;
  move(3, 3) = 1.0;
  return move;
}

CKorvoUserData* CKorvoObjectWrapper::GetRecord() const {
  if (IsLight()) {
    if (m_working_copy) return CKorvoUserData::Of(ZK_Light::Cast(m_working_copy));
    const CTarsaLight* host_light = CTarsaLight::Cast(m_object);
    return CKorvoUserData::Of(host_light ? &host_light->Light() : nullptr);
  }
  return CKorvoUserData::Of(m_working_copy ? CTarsaObject::Cast(m_working_copy) : m_object);
}

CKorvoUserData* CKorvoObjectWrapper::GetEditableRecord() {
  if (m_object == nullptr) return nullptr;
  if (IsLight()) {
    const CTarsaLight* host_light = CTarsaLight::Cast(m_object);
    if (host_light == nullptr) return nullptr;
    if (m_working_copy == nullptr) m_working_copy = new ZK_Light(host_light->Light());
    ZK_Light* light = ZK_Light::Cast(m_working_copy);
    if (light == nullptr) return nullptr;
    if (CKorvoUserData* record = CKorvoUserData::Of(light)) return record;
    std::unique_ptr<CKorvoUserData> record(new CKorvoUserData());
    return light->AttachUserData(record.get()) ? record.release() : nullptr;
  }
  if (m_working_copy == nullptr) m_working_copy = m_object->Duplicate();
  const CTarsaObject* copy = CTarsaObject::Cast(m_working_copy);
  if (copy == nullptr) return nullptr;
  if (CKorvoUserData* record = CKorvoUserData::Of(copy)) return record;
  std::unique_ptr<CKorvoUserData> record(new CKorvoUserData());
  return copy->AttachGeometryUserData(record.get()) ? record.release() : nullptr;
}

bool CKorvoObjectWrapper::Commit() {
  CTarsaDoc* doc = Document();
  if (doc == nullptr) {
    DestroyWorkingCopy();
    return false;
  }
  if (m_working_copy == nullptr) return true;
  CKorvoEventWatcherPause pause;
  if (IsLight()) {
    const ZK_UUID id = m_object->ModelObjectId();
    const ZK_Light* light = ZK_Light::Cast(m_working_copy);
    const bool committed = light != nullptr && light->m_light_index >= 0 &&
                           doc->LightTable().ModifyLight(*light, light->m_light_index, true, false);
    // The light table copied the modified light; the working copy is ours to destroy.
    DestroyWorkingCopy();
    const CTarsaObject* replaced = m_object;
    if (committed) m_object = doc->LookupObject(id);
    if (committed && m_object)
      KorvoPlugIn().EventWatcher()->CountReplacement(*doc, *replaced, *m_object);
    return committed;
  }
  CTarsaObject* copy = CTarsaObject::Cast(m_working_copy);
  if (copy == nullptr || !doc->ReplaceObject(CTarsaObjRef(m_object), copy, false)) {
    DestroyWorkingCopy();
    return false;
  }
  KorvoPlugIn().EventWatcher()->CountReplacement(*doc, *m_object, *copy);
  // The document owns the replacement now, and it is the object from here on.
  m_working_copy = nullptr;
  m_object = copy;
  return true;
}

bool CKorvoObjectWrapper::ApplyStance(const ZK_UUID& stance_id) {
  const CKorvoUserData* record = GetRecord();
  const ZK_Xform* saved = record ? record->FindXform(stance_id) : nullptr;
  if (saved == nullptr) return false;
  const ZK_Xform& current = record->m_accumulated_xform;
  if (SamePlacement(*saved, current)) return true;
  CTarsaDoc* doc = Document();
  return doc != nullptr && MoveBy(*doc, MoveBack(current, *saved));
}

bool CKorvoObjectWrapper::MoveBy(CTarsaDoc& doc, const ZK_Xform& move) {
  if (!Commit()) return false;
  // Paused as a commit is: the host's copy carries the record already, and the move's one
  // replacement reaches the watcher's counts here, without its round of events.
  CKorvoEventWatcherPause pause;
  const CKorvoUserData::LastXformTakenOut taken_out;
  const CTarsaObject* moved = doc.TransformObject(CTarsaObjRef(m_object), move, true, true, false);
  if (moved == nullptr) return false;
  KorvoPlugIn().EventWatcher()->CountReplacement(doc, *m_object, *moved);
  // Like every replacement's new half, the moved object keeps no last transform to take out.
  if (CKorvoUserData* moved_record = CKorvoUserData::Of(moved))
    moved_record->m_last_xform.Identity();
  m_object = moved;
  m_working_copy = nullptr;
  return true;
}

CTarsaDoc* CKorvoObjectWrapper::Document() const {
  CTarsaDoc* doc = m_object ? m_object->Document() : nullptr;
  return doc ? doc : TarsaApp().ObsoleteActiveDoc();
}

bool CKorvoObjectWrapper::IsLight() const {
  return m_object != nullptr && m_object->ObjectType() == ZK_Light::kObjectType;
}

void CKorvoObjectWrapper::DestroyWorkingCopy() {
  delete m_working_copy;
  m_working_copy = nullptr;
}
